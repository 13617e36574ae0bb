# Daemons for tests and pictures of the console, on free ports of loopback; to be sourced. They end
# with the shell that sources this, and so does the folder $work, where their files are.
work=$(mktemp -d)
daemons=()

end_daemons() {
  local pid
  for pid in "${daemons[@]}"; do
    kill "$pid" 2>/dev/null || true
    wait "$pid" 2>/dev/null || true
  done
  rm -rf "$work"
}
trap end_daemons EXIT

free_ports() {
  node -e 'const { createServer } = require("node:net");
    const servers = Array.from({ length: Number(process.argv[1]) }, () => createServer());
    let waiting = servers.length;
    for (const server of servers) {
      server.listen(0, "127.0.0.1", () => {
        console.log(server.address().port);
        if (--waiting === 0) for (const one of servers) one.close();
      });
    }' "$1"
}

# furnish HOME [LINE...]: a home whose eventd listens on a free port; the lines go to host.ini.
furnish() {
  local home=$1
  shift
  (umask 077 && mkdir -p "$home")
  # Tests are quicker than people.
  printf '%s\n' '[tcp]' 'listen = 127.0.0.1:0' '[limits]' 'requests_per_second = 100000' \
    'burst = 100000' >"$home/eventd.ini"
  [ $# -eq 0 ] || printf '%s\n' "$@" >"$home/host.ini"
}

# serve BIN HOME: returns when an eventd serves that home. Sets url, admin and read (tokens).
serve() {
  local bin=$1 home=$2 pid port= log=$2/stderr
  admin=$("$bin/eventctl" --home "$home" token add operator --role admin)
  read=$("$bin/eventctl" --home "$home" token add dashboard --role read)
  "$bin/eventd" --home "$home" 2>"$log" &
  pid=$!
  daemons+=("$pid")
  until [ -n "$port" ]; do
    if ! kill -0 "$pid" 2>/dev/null; then
      echo "eventd ended before it served:" >&2
      cat "$log" >&2
      exit 1
    fi
    sleep 0.1
    port=$(grep -o 'listens on .*' "$log" 2>/dev/null | grep -o '127\.0\.0\.1:[0-9]*' |
      tail -n 1) || true
  done
  url=http://$port
  if ! node -e "fetch('$url/').then(async (page) =>
      process.exit((await page.text()).startsWith('<!doctype html>') ? 0 : 1))"; then
    echo "$bin/eventd serves no console: it was built with -DEVENTSYSTEM_CONSOLE=OFF" >&2
    exit 1
  fi
}

# serve_etcd: three members of one cluster. Sets endpoints, and members (their processes).
serve_etcd() {
  local ports peers n
  mapfile -t ports < <(free_ports 6)
  peers=$(for n in 0 1 2; do printf ',etcd-%d=http://127.0.0.1:%s' $((n + 1)) "${ports[n + 3]}"; done)
  members=()
  for n in 0 1 2; do
    etcd --name "etcd-$((n + 1))" --data-dir "$work/etcd-$((n + 1))" \
      --listen-client-urls "http://127.0.0.1:${ports[n]}" \
      --advertise-client-urls "http://127.0.0.1:${ports[n]}" \
      --listen-peer-urls "http://127.0.0.1:${ports[n + 3]}" \
      --initial-advertise-peer-urls "http://127.0.0.1:${ports[n + 3]}" \
      --initial-cluster "${peers#,}" --logger=zap --log-level=error \
      >"$work/etcd-$((n + 1)).log" 2>&1 &
    members+=($!)
  done
  daemons+=("${members[@]}")
  endpoints=127.0.0.1:${ports[0]},127.0.0.1:${ports[1]},127.0.0.1:${ports[2]}
  until ETCDCTL_API=3 etcdctl --endpoints "$endpoints" endpoint health >/dev/null 2>&1; do
    kill -0 "${members[@]}" || { cat "$work"/etcd-*.log >&2; exit 1; }
    sleep 0.1
  done
}
