#!/bin/sh
# postgres.sh FOLDER [tls]: a server of PostgreSQL in the folder, on a socket there and a port of the loopback. Prints the
# port when it answers; ends, and the server with it, when it is told to or whoever started it is gone. At USR1 the server is
# stopped without a moment for anything, and started again. With "tls" the port asks for encryption and a password, and the
# server speaks German; its certificate, made out for localhost and 0.0.0.0, is of ca.crt's authority, beside which lies
# other.crt's.
set -e
folder=$1
programs=$(ls -d /usr/lib/postgresql/*/bin | sort -V | tail -n 1)
as=
if [ "$(id -u)" = 0 ]; then # the server refuses to run as root
  chown nobody "$folder"
  as="setpriv --reuid=nobody --regid=nogroup --clear-groups"
fi
cd "$folder"
$as "$programs/initdb" --pgdata data --username tarvolinex --auth trust --no-sync --encoding UTF8 --locale C >log 2>&1
options=
if [ "$2" = tls ]; then
  certificate="$as openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2"
  for authority in ca other; do $certificate -subj /CN=$authority -keyout $authority.key -out $authority.crt; done 2>>log
  $certificate -CA ca.crt -CAkey ca.key -subj /CN=localhost -addext subjectAltName=DNS:localhost,IP:0.0.0.0 \
    -addext basicConstraints=critical,CA:FALSE -keyout data/server.key -out data/server.crt 2>>log
  printf 'local all all trust\nhostssl all all all scram-sha-256\n' >data/pg_hba.conf
  options="-c ssl=on -c lc_messages=C.UTF-8"
  export LANGUAGE=de
fi
port=$(python3 -c 'import socket; s = socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])')
start() {
  $as "$programs/postgres" -D data -p "$port" -k "$folder" -c listen_addresses=127.0.0.1 -c fsync=off \
    -c full_page_writes=off -c shared_buffers=32MB -c max_connections=60 -c autovacuum=off $options >>log 2>&1 &
  server=$!
}
start
trap 'kill -INT $server; wait $server; exit' TERM INT
trap 'kill -QUIT $server; wait $server || :; start' USR1
until "$programs/pg_isready" -q -h 127.0.0.1 -p "$port"; do sleep 0.05; done
echo "$port"
exec >&-
while kill -0 "$PPID" && kill -0 "$server"; do sleep 0.3; done 2>/dev/null
kill -INT "$server"
wait "$server"
