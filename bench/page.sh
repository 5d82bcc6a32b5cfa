# What ./dev bench makes of the benchmarks' rows. Sourced by it.

# size_rows: each DLL against 1 MB, in the form of the benchmarks' rows.
size_rows() {
  local width size
  for width in win64 win32; do
    size=$(stat -c %s "$BUILD/$width/V5Strings.dll")
    awk -v width="$width" -v size="$size" 'BEGIN { ratio = size / 1048576
      printf "size: V5Strings.dll, %s / 1 MB  %d KB  1024 KB  %.3f  <=1  %s\n", width, (size + 512) / 1024, ratio,
             ratio <= 1 ? "ok" : "MISSED" }'
  done
}
# performance_page ROWS: the page of a run, with the machine that it ran on.
performance_page() {
  local load; load=$(cut -d ' ' -f 1 /proc/loadavg)
  cat <<PAGE
# Performance

Written by \`./dev bench\`. Each row compares our way of doing something with a peer's way in the same run, on the same
data; a goal is a ratio, since times differ from machine to machine and ratios hardly do.

Measured on $(date +%Y-%m-%d), with V5Strings $(. packaging/package.sh; package_version) built by GCC $(g++ -dumpfullversion):

- $(nproc) processors ($(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1)), $(awk '/MemTotal/ { printf "%.0f", $2 / 1048576 }' /proc/meminfo) GB of memory
- $(. /etc/os-release; echo "$PRETTY_NAME"), $(wine --version 2>/dev/null)
- Load average at the end of the run: $load. Other work on the machine adds noise to every row.

| What | Ours | Peer | Ratio | Goal | |
|---|---|---|---|---|---|
$(awk -F '   *' '{ printf "| %s | %s | %s | %s | %s | %s |\n", $1, $2, $3, $4, $5, $6 }' "$1")
PAGE
}
