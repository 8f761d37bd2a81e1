#!/usr/bin/env bash
# Kills `quillon-cli resave` of a large project with SIGKILL at random moments, KILLS times
# (default 100). After every kill the target must be byte for byte the old file or the new one,
# and so must every version in its history; the next save, run to its end, must leave no
# temporary file in the folder or in the history.
# Usage: bench/kill_resave_bench.sh [QUILLON_CLI] [KILLS]
set -euo pipefail
cli=$(realpath "${1:-build-dev/src/cli/quillon-cli}")
kills=${2:-100}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

# Two projects of 100 messages with a 100 kB comment each (about 10 MB) that differ in every line.
make_project() {
  local comment
  comment=$(head -c 100000 /dev/zero | tr '\0' "$2")
  for i in $(seq 1 100); do printf 'M@Meldung %d %s;%s\r\n' "$i" "$1" "$comment"; done >"$3"
}
make_project Alpha a alpha.in
make_project Omega o omega.in
mkdir refs target
"$cli" resave alpha.in refs/alpha.EAY 2>/dev/null
"$cli" resave omega.in refs/omega.EAY 2>/dev/null
cp refs/alpha.EAY target/Anlage.EAY

temporaries() { find target -name '.*.quillon-*.tmp' | wc -l; }
now_ms() { echo $(($(date +%s%N) / 1000000)); }

start=$(now_ms)
"$cli" resave omega.in target/Anlage.EAY 2>/dev/null
"$cli" resave alpha.in target/Anlage.EAY 2>/dev/null
save_ms=$((($(now_ms) - start) / 2))
echo "one resave of $(stat -c %s refs/alpha.EAY) bytes takes about ${save_ms} ms"

old=0 new=0 broken=0 left_by_kills=0 most_left=0 left_after_save=0
for ((k = 1; k <= kills; k++)); do
  if cmp -s target/Anlage.EAY refs/alpha.EAY; then
    from=omega was=refs/alpha.EAY becomes=refs/omega.EAY
  else
    from=alpha was=refs/omega.EAY becomes=refs/alpha.EAY
  fi
  delay_ms=$((RANDOM % (save_ms + 1)))
  "$cli" resave "$from.in" target/Anlage.EAY 2>/dev/null &
  pid=$!
  sleep "$(printf '%d.%03d' $((delay_ms / 1000)) $((delay_ms % 1000)))"
  kill -9 "$pid" 2>/dev/null || true
  wait "$pid" 2>/dev/null || true

  if cmp -s target/Anlage.EAY "$was"; then
    old=$((old + 1))
  elif cmp -s target/Anlage.EAY "$becomes"; then
    new=$((new + 1))
  else
    broken=$((broken + 1))
    echo "kill $k after ${delay_ms} ms: the target is neither the old file nor the new one"
  fi
  for version in target/.quillon-history/*; do
    [ -e "$version" ] || continue
    if ! cmp -s "$version" refs/alpha.EAY && ! cmp -s "$version" refs/omega.EAY; then
      broken=$((broken + 1))
      echo "kill $k: the kept version $version is cut off"
    fi
  done
  left=$(temporaries)
  left_by_kills=$((left_by_kills + left))
  ((left > most_left)) && most_left=$left

  # The next save runs to its end and clears what the killed one left.
  if ! "$cli" resave "$from.in" target/Anlage.EAY 2>/dev/null; then
    broken=$((broken + 1))
    echo "kill $k: the save after it failed"
  fi
  left_after_save=$((left_after_save + $(temporaries)))
done

echo "$kills kills: target old $old, new $new, neither $broken"
echo "temporary files found after a kill: $left_by_kills in all, at most $most_left at once"
echo "temporary files left after the next save: $left_after_save"
echo "history: $(find target/.quillon-history -type f | wc -l) versions kept," \
  "$(du -sh target/.quillon-history | cut -f1)"
[ "$broken" -eq 0 ] && [ "$left_after_save" -eq 0 ]
