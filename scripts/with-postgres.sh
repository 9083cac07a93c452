#!/usr/bin/env bash
# Runs a command beside a throwaway PostgreSQL server: a fresh cluster in a
# temporary folder under /tmp, listening on a unix socket in that folder only
# (no TCP port), run as the unprivileged user `nobody` when started as root.
# The command finds the server's database in KRMWTARN_TEST_PG (a postgresql://
# URL); the server and its folder are removed afterwards, whatever the command
# answered. Its exit status is the command's.
# Usage: bash scripts/with-postgres.sh COMMAND [ARGS...]
# KRMWTARN_PG_SETTINGS adds server settings (default: no fsync, as nothing here
# outlives the run; the benchmark passes "" to keep the server's defaults).
set -euo pipefail
[ $# -gt 0 ] || { echo "usage: with-postgres.sh COMMAND [ARGS...]" >&2; exit 2; }
bin="$(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V | tail -n 1)"
[ -x "$bin/initdb" ] || { echo "with-postgres: no PostgreSQL server (bash scripts/setup.sh installs it)" >&2; exit 1; }
settings="${KRMWTARN_PG_SETTINGS--c fsync=off -c synchronous_commit=off -c full_page_writes=off}"
dir="$(mktemp -d /tmp/krmwtarn-pg.XXXXXX)"
as=()
if [ "$(id -u)" -eq 0 ]; then
  chown nobody "$dir"
  as=(runuser -u nobody --)
fi
chmod 755 "$dir"
stop() {
  (cd "$dir" && "${as[@]}" "$bin/pg_ctl" -D "$dir/data" -m immediate -s stop >/dev/null 2>&1) || true
  rm -rf "$dir"
}
trap stop EXIT
cd "$dir"
"${as[@]}" "$bin/initdb" -D "$dir/data" -U krmwtarn --auth=trust -E UTF8 --locale=C --no-sync >"$dir/initdb.log" 2>&1 ||
  { cat "$dir/initdb.log" >&2; exit 1; }
# shellcheck disable=SC2086
"${as[@]}" "$bin/pg_ctl" -D "$dir/data" -l "$dir/server.log" -w -s \
  -o "-c listen_addresses='' -k $dir -c max_connections=60 $settings" start ||
  { cat "$dir/server.log" >&2; exit 1; }
"$bin/createdb" -h "$dir" -U krmwtarn krmwtarn
export KRMWTARN_TEST_PG="postgresql:///krmwtarn?host=$dir&user=krmwtarn"
cd - >/dev/null
set +e
"$@"
status=$?
set -e
exit $status
