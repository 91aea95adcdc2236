"""A web server of the tests' own on loopback: nginx and fcgiwrap with the package's configuration, as an ordinary user,
and the install files that are sent to it."""
import base64
import csv
import datetime
import io
import json
import os
import pathlib
import random
import shutil
import signal
import socket
import struct
import subprocess
import tempfile
import time
import zipfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ.get('BUILD', ROOT / 'build'))
PACKAGE = ROOT / 'server/package'
DELIVERED = BUILD / 'app/delivered'
MODULE = bytearray((BUILD / 'windows/Xcdsfx32.bin').read_bytes())
struct.pack_into('<I', MODULE, struct.unpack_from('<I', MODULE, 0x3C)[0] + 88, 0)  # the check sum, as install files have it
NOBODY = 65534


def quick_place():
    """A folder in memory where there is enough of it: the tests store hundreds of megabytes."""
    memory = '/dev/shm'
    return memory if os.path.isdir(memory) and shutil.disk_usage(memory).free > 2 << 30 else tempfile.gettempdir()


def now_id(reference, shift=0):
    seconds = int((datetime.datetime.now() - datetime.datetime(1999, 1, 1)).total_seconds()) + shift
    return f'{int(reference):06d}{seconds}'


def install_file(files, settings='Title=Lease Calculator Self-Extractor\nFolder=%t\nCommand=%t\\setup.exe\n', module=MODULE, edit=None):
    """An install file of these files, or of the entries that `edit` writes into the open archive."""
    settings = settings.encode()
    head = bytes(module) + b'TARVOLINEX-SFX1\0' + struct.pack('<II', len(settings), 0) + settings
    packed = io.BytesIO(head)
    packed.seek(0, io.SEEK_END)
    with zipfile.ZipFile(packed, 'a', zipfile.ZIP_DEFLATED) as archive:
        for name, data in files.items():
            archive.writestr(name, data)
        if edit:
            edit(archive)
    whole = bytearray(packed.getvalue())
    struct.pack_into('<I', whole, len(module) + 20, len(whole) - len(head))
    return bytes(whole)


class Program:
    """The program with a folder of its own, and what it prices and publishes for supplier 1."""

    def __init__(self, folder):
        self.command = [BUILD / 'app/tarvolinex', '--app-folder', folder]
        details = {'OrgCompanyName': 'Größe & Söhne <Leasing>', 'OrgEmail': 'leases@example.com'}
        self.run('preferences', 'write', given=json.dumps(details))

    def run(self, *words, given=''):
        done = subprocess.run([*self.command, *words], input=given, capture_output=True, text=True)
        assert done.returncode == 0, done.stderr
        return done.stdout

    def payment(self, cost, term):
        rows = self.run('quote', '--supplier', '1', '-', given=f'Mode,CapitalCost,NumberOfPayments\n0,{cost},{term}\n')
        return f"{float(next(csv.DictReader(rows.splitlines()))['Payment']):.2f}"


def calculator():
    """The files of a calculator as the program publishes it."""
    with tempfile.TemporaryDirectory() as folder:
        page = Program(folder).run('publish', '--supplier', '1').strip()
        files = {file.name: file.read_bytes() for file in pathlib.Path(page).iterdir()}
    return {name: data for name, data in files.items() if name not in ('setup.exe', 'calc_test.html')}


class Host:
    """The server, with customer reference 123456 known to it."""

    def __init__(self, replace=(), place=None):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix='tarvolinex-server-', dir=place or quick_place()))
        self.data, self.log = self.folder / 'data', self.folder / 'requests.log'
        for name in ('data/known', 'data/links', 'data/incoming', 'data/calculators', 'etc', 'bin', 'tmp', 'share'):
            (self.folder / name).mkdir(parents=True)
        for program in ('tarvolinex-receive', 'tarvolinex-server'):
            shutil.copy(BUILD / 'server' / program, self.folder / 'bin')
        shutil.copy(BUILD / 'windows/Xcdsfx32.bin', self.data / 'known')
        shutil.copy(DELIVERED / 'CalcTemplate.html', self.data / 'known')
        self.settings('')
        self.port = self.free_port()
        for name in ('site.conf', 'limits.conf', 'fastcgi.conf', 'headers.conf'):
            (self.folder / 'share' / name).write_text(self.placed((PACKAGE / name).read_text(), replace))
        policy = subprocess.run([PACKAGE / 'policy', *(self.data / 'known').glob('*.html')], check=True, capture_output=True)
        (self.data / 'policy.conf').write_bytes(policy.stdout)
        (self.folder / 'nginx.conf').write_text(f'''daemon off; worker_processes 2; pid {self.folder}/nginx.pid;
error_log {self.folder}/error.log; events {{ worker_connections 2048; }}
http {{ access_log {self.folder}/access.log; {''.join(f"{kind}_temp_path {self.folder}/tmp/{kind}; " for kind in
        ('client_body', 'fastcgi', 'proxy', 'uwsgi', 'scgi'))}
include {self.folder}/share/limits.conf;
server {{ listen 127.0.0.1:{self.port} backlog=1024; listen 127.0.0.1:{self.port + 2} ssl;
ssl_certificate {self.folder}/cert.pem; ssl_certificate_key {self.folder}/key.pem; include {self.folder}/share/site.conf; }}
server {{ listen 127.0.0.1:{self.port + 1}; listen 127.0.0.1:{self.port + 3} ssl;
ssl_certificate {self.folder}/cert.pem; ssl_certificate_key {self.folder}/key.pem; location / {{ root {self.folder}/tmp; dav_methods PUT; client_max_body_size 21m; client_body_buffer_size 512k; }} }} }}
''')
        subprocess.run(['openssl', 'req', '-x509', '-newkey', 'ec', '-pkeyopt', 'ec_paramgen_curve:prime256v1', '-nodes', '-days',
                        '2', '-subj', '/CN=localhost', '-addext', 'subjectAltName=DNS:localhost', '-keyout',
                        self.folder / 'key.pem', '-out', self.folder / 'cert.pem'], check=True, stderr=subprocess.DEVNULL)
        # Its user may not read what the sanitizers are told elsewhere.
        own = {name: value for name, value in os.environ.items() if name != 'LSAN_OPTIONS'}
        self.environment = dict(own, TARVOLINEX_SERVER_CONF=str(self.folder / 'etc/server.conf'))
        self.user = {}
        if os.geteuid() == 0:
            self.user = {'user': NOBODY, 'group': NOBODY, 'extra_groups': []}
            for path in (self.folder, *self.folder.rglob('*')):
                os.chown(path, NOBODY, NOBODY)
        self.processes = []
        self.secret = self.admin('add', '123456', 'Example Leasing Ltd').strip()

    def placed(self, text, replace):
        for old, new in (('/usr/lib/tarvolinex-server', self.folder / 'bin'), ('/usr/share/tarvolinex-server', self.folder / 'share'),
                         ('/var/lib/tarvolinex-server', self.data), ('/run/tarvolinex-server', self.folder), *replace):
            text = text.replace(str(old), str(new))
        return text

    def settings(self, more):
        (self.folder / 'etc/server.conf').write_text(
            f'data = {self.data}\nknown = {self.data}/known\nreferences = {self.folder}/etc/references\n'
            f'version = {self.folder}/etc/version\nlog = {self.log}\n{more}')

    @staticmethod
    def free_port():
        """The first of four that nothing listens at, below those that connections get."""
        while True:
            first = random.randrange(20000, 32000)
            try:
                for port in range(first, first + 4):
                    with socket.socket() as one:
                        one.bind(('127.0.0.1', port))
                return first
            except OSError:
                continue

    def start(self):
        children = [['nginx', '-c', self.folder / 'nginx.conf', '-p', self.folder, '-e', self.folder / 'error.log'],
                    ['fcgiwrap', '-c', '4', '-s', f'unix:{self.folder}/receive.sock', '-p', self.folder / 'bin/tarvolinex-receive']]
        path = dict(self.environment, PATH=os.environ['PATH'] + ':/usr/sbin')
        for command in children:
            # fcgiwrap's own children outlive it: a group ends together.
            with open(self.folder / 'output.log', 'ab') as log:
                self.processes.append(subprocess.Popen(command, env=path, cwd=self.folder, stdout=log, stderr=log,
                                                       start_new_session=True, **self.user))
        for _ in range(200):
            with socket.socket() as one:
                if one.connect_ex(('127.0.0.1', self.port)) == 0 and (self.folder / 'receive.sock').exists():
                    return self
            time.sleep(0.05)
        said = (self.folder / 'output.log').read_text()
        self.stop()
        raise AssertionError(said)

    def stop(self):
        for process in self.processes:
            os.killpg(process.pid, signal.SIGTERM)
        for process in self.processes:
            process.wait()
        shutil.rmtree(self.folder, ignore_errors=True)

    def admin(self, *words, check=True):
        return subprocess.run([self.folder / 'bin/tarvolinex-server', *words], env=self.environment, check=check,
                              capture_output=True, text=True, **self.user).stdout

    @property
    def address(self):
        return f'http://127.0.0.1:{self.port}'

    def authorization(self, user='123456', secret=None):
        return 'Basic ' + base64.b64encode(f'{user}:{secret or self.secret}'.encode()).decode()

    def stored(self):
        """How many records and calculators there are."""
        links = [file for file in (self.data / 'links').glob('*/*') if not file.name.startswith('.')]
        return len(links), len(list((self.data / 'calculators').iterdir()))


def request_body(data, name):
    return (f'--AaB03x\r\nContent-Disposition: attachment; name="FILE1"; filename="C:\\Program Files\\{name}"\r\n'
            'Content-Type: text/plain\r\n\r\n').encode('latin-1') + data + b'\r\n--AaB03x--'
