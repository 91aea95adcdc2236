#!/usr/bin/python3
"""A mail or web server on loopback for the tests: server.py smtp|http FOLDER BEHAVIOUR...

Prints its port. What it receives goes into FOLDER: a message as its parsed parts, a request as its bytes.
"""
import asyncio
import email
import email.policy
import http.server
import json
import pathlib
import ssl
import sys
import time

folder = sys.argv[2]
behaviour = sys.argv[3:]
met = set()


def store(name, data):
    part = pathlib.Path(folder, name + ".part")
    part.write_bytes(data)
    part.rename(pathlib.Path(folder, name))


def announce(port):
    print(port, flush=True)


class Mailbox:
    """Takes messages; parsed by the standard library, which is nobody's part of the program."""

    async def handle_MAIL(self, server, session, envelope, address, options):
        if "refuse" in behaviour:
            return "550 no mail today"
        envelope.mail_from = address
        return "250 OK"

    async def handle_RCPT(self, server, session, envelope, address, options):
        if "refuse-second" in behaviour and envelope.rcpt_tos:
            return "550 no such user"
        # What a reader called so meets, of those of a "people".
        if "people" in behaviour and address.startswith("no."):
            return "550 no such user"
        if "people" in behaviour and address.startswith("later.") and address not in met:
            met.add(address)
            return "451 try again later"
        envelope.rcpt_tos.append(address)
        return "250 OK"

    async def handle_DATA(self, server, session, envelope):
        if "drop" in behaviour:
            server.transport.abort()
            return "451 gone"
        if "later" in behaviour:
            return "451 try again later"
        if "people" in behaviour:
            with open(pathlib.Path(folder, "taken"), "a") as taken:
                taken.write(",".join(envelope.rcpt_tos) + "\n")
            if envelope.rcpt_tos[0].startswith("gone."):
                server.transport.abort()
            return "250 OK"
        message = email.message_from_bytes(envelope.original_content, policy=email.policy.default)
        parts = list(message.walk())
        attached = [part for part in parts if part.get_filename()]
        text = next(part for part in parts if part.get_content_type() == "text/plain" and not part.get_filename())
        store("attachment", attached[0].get_content() if attached else b"")
        store("message.json", json.dumps({
            "sender": envelope.mail_from, "recipients": ",".join(envelope.rcpt_tos), "user": getattr(session, "user", ""),
            "tls": "yes" if session.ssl else "no", "from": str(message["From"]), "to": str(message["To"]),
            "subject": str(message["Subject"]), "headers": ",".join(sorted(message.keys())),
            "text": text.get_content(), "attachment": attached[0].get_filename() if attached else "",
            "defects": ",".join(str(defect) for part in parts for defect in part.defects),
            "longest": str(max(len(line) for line in envelope.original_content.split(b"\r\n"))),
        }, ensure_ascii=False).encode())
        return "250 taken"


def smtp():
    from aiosmtpd.smtp import SMTP, AuthResult, LoginPassword

    def log_in(server, session, envelope, mechanism, data):
        right = isinstance(data, LoginPassword) and (data.login, data.password) == (b"ann", b"right word")
        session.user = data.login.decode() if right else ""
        return AuthResult(success=right, handled=False)

    context = None
    if "tls" in behaviour:
        context = ssl.create_default_context(ssl.Purpose.CLIENT_AUTH)
        context.load_cert_chain(pathlib.Path(folder, "cert.pem"), pathlib.Path(folder, "key.pem"))

    def factory():
        return SMTP(Mailbox(), tls_context=context, require_starttls=bool(context), auth_required=bool(context),
                    authenticator=log_in, enable_SMTPUTF8=False, data_size_limit=1 << 28)

    async def says_nothing(reader, writer):
        await asyncio.sleep(60)

    async def greets_without_end(reader, writer):
        while True:
            writer.write(b"220-hello " * 200 + b"\r\n")
            await writer.drain()

    loop = asyncio.new_event_loop()
    asyncio.set_event_loop(loop)
    odd = {"silent": says_nothing, "chatty": greets_without_end}.get("".join(behaviour))
    starting = asyncio.start_server(odd, "127.0.0.1", 0) if odd else loop.create_server(factory, "127.0.0.1", 0)
    announce(loop.run_until_complete(starting).sockets[0].getsockname()[1])
    loop.run_forever()


class Upload(http.server.BaseHTTPRequestHandler):
    def head(self):
        return (f"{self.command} {self.path}\n" + "".join(f"{k}: {v}\n" for k, v in self.headers.items())).encode()

    # The program asks what the server takes; behind "asked:" stands the answer.
    def do_GET(self):
        store("asked", self.head())
        answers = [word[6:] for word in behaviour if word.startswith("asked:")]
        self.send_response(200 if answers else 501)
        self.end_headers()
        self.wfile.write("".join(answers).encode())

    def do_POST(self):
        if "drop" in behaviour:
            return self.connection.close()
        length, body = int(self.headers["Content-Length"]), b""
        while len(body) < length:
            piece = self.rfile.read(min(65536, length - len(body)))
            if not piece:
                return
            body += piece
            time.sleep(0.05 if "slow" in behaviour else 0)
        time.sleep(60 if "silent" in behaviour else 0)
        well = b"HTTP/1.0 200 OK\r\n"
        for word, first, piece, pause in (("endless", well + b"\r\n", b"x" * 65536, 0), ("drip", well + b"\r\n", b"x", 0.2),
                                          ("headers", well, b"X-More: " + b"x" * 1000 + b"\r\n", 0)):
            while word in behaviour:
                self.wfile.write(first + piece)
                first = b""
                time.sleep(pause)
        store("body", body)
        store("head", self.head())
        status = next((int(word) for word in behaviour if word.isdigit()), 200)
        answer = " ".join(word for word in behaviour if not word.isdigit() and word not in ("slow", "silent") and not word.startswith("asked:")).encode()
        self.send_response(status)
        self.send_header("Content-Length", str(len(answer)))
        self.end_headers()
        self.wfile.write(answer)

    def log_message(self, *_):
        pass


if sys.argv[1] == "smtp":
    smtp()
with http.server.ThreadingHTTPServer(("127.0.0.1", 0), Upload) as web:
    announce(web.server_address[1])
    web.serve_forever()
