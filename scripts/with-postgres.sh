#!/usr/bin/env bash
# Runs a command with a private PostgreSQL server on loopback, started in a
# temporary directory and stopped afterwards. The command sees KB_TEST_PG
# (HOST:PORT/DATABASE) and PGUSER.
set -euo pipefail

PGBIN=$(ls -d /usr/lib/postgresql/*/bin | sort -V | tail -1)
PGPORT=${KB_PG_PORT:-55432}
# Another server (a developer's own, say) may already listen there: take the
# next free port.
free_port() {
  while (exec 3<>/dev/tcp/127.0.0.1/$PGPORT) 2>/dev/null; do
    PGPORT=$((PGPORT + 1))
  done
}
free_port
TMP=$(mktemp -d /tmp/kettlebrook-pg.XXXXXX)
chmod 755 "$TMP"
PGDATA=$TMP/pgdata
PGSOCK=$TMP/pgsock
mkdir -p "$PGDATA" "$PGSOCK"

as_pg() {
  if [ "$(id -u)" -eq 0 ]; then
    chown -R postgres:postgres "$TMP"
    su postgres -s /bin/sh -c "$1"
  else
    sh -c "$1"
  fi
}

stop() {
  as_pg "$PGBIN/pg_ctl -D $PGDATA -m fast -w stop" >/dev/null 2>&1 || true
  rm -rf "$TMP"
}
trap stop EXIT

as_pg "$PGBIN/initdb -D $PGDATA -U postgres --auth=trust -E UTF8 --locale=C.UTF-8" >/dev/null
# The test server keeps nothing worth an fsync.
# Another script starting at the same moment may take the port between the
# look and the start: then try the next one.
for try in 1 2 3 4 5; do
  if as_pg "$PGBIN/pg_ctl -D $PGDATA -l $PGDATA/server.log -w -o '-p $PGPORT -k $PGSOCK -c listen_addresses=127.0.0.1 -c fsync=off -c synchronous_commit=off -c full_page_writes=off -c max_connections=200' start" >/dev/null 2>&1; then
    break
  fi
  [ "$try" -lt 5 ] || { cat "$PGDATA/server.log" >&2; exit 1; }
  PGPORT=$((PGPORT + 1 + RANDOM % 20))
  free_port
done

export KB_TEST_PG="127.0.0.1:$PGPORT/postgres"
export PGUSER=postgres
"$@"
