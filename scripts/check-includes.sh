#!/usr/bin/env bash
# Fails when a file under src/ includes a header of a folder its own folder may not include, or
# when the includes between folders form a cycle. The allowed graph is the "grafo" block of
# docs/DESENVOLVIMENTO.md: one line per folder, "folder: folders it may include".
set -euo pipefail
cd "$(dirname "$0")/.."

graph=$(awk '/^```grafo/{on=1; next} /^```/{on=0} on' docs/DESENVOLVIMENTO.md)
if [ -z "$graph" ]; then
    echo "docs/DESENVOLVIMENTO.md has no grafo block" >&2
    exit 1
fi

# "header folder" for every header, then "file folder included-header" for every include.
headers=$(find src -name '*.h' -printf '%f %h\n' | sed 's| src/| |')
includes=$(grep -rHo --include='*.h' --include='*.cpp' '^[[:space:]]*#[[:space:]]*include[[:space:]]*"[^"]*"' src |
    sed -E 's|^src/(.*)/([^/]*):.*"([^"]*)"$|\2 \1 \3|')

awk -v graph="$graph" -v headers="$headers" '
function visit(n,    i, k) {
    state[n] = 1
    k = split(out[n], next_, " ")
    for (i = 1; i <= k; i++) {
        if (state[next_[i]] == 1) { cycle = cycle " " n "->" next_[i]; continue }
        if (state[next_[i]] == 0) visit(next_[i])
        k = split(out[n], next_, " ")
    }
    state[n] = 2
}
function acyclic(what,    n) {
    delete state; cycle = ""
    for (n in nodes) if (!state[n]) visit(n)
    if (cycle != "") { print "cycle in the " what ":" cycle; bad = 1 }
}
BEGIN {
    n = split(graph, lines, "\n")
    for (i = 1; i <= n; i++) {
        if (lines[i] !~ /:/) continue
        split(lines[i], parts, ":")
        from = parts[1]; gsub(/ /, "", from); known[from] = 1
        k = split(parts[2], targets, " ")
        for (j = 1; j <= k; j++) allowed[from SUBSEP targets[j]] = 1
    }
    n = split(headers, lines, "\n")
    for (i = 1; i <= n; i++) { split(lines[i], p, " "); home[p[1]] = p[2] }
}
{
    file = $1; from = $2; name = $3; sub(/.*\//, "", name)
    if (!(name in home) || home[name] == from) next
    to = home[name]
    if (!(from in known) && !(from in told)) { print "src/" from ": not in the grafo"; told[from] = 1; bad = 1 }
    if (!((from SUBSEP to) in allowed)) { print "src/" from "/" file " includes " $3 " (" to "): not allowed"; bad = 1 }
    if (!((from SUBSEP to) in seen)) { seen[from SUBSEP to] = 1; out[from] = out[from] " " to; nodes[from]; nodes[to] }
}
END {
    acyclic("includes")
    delete out; delete nodes
    for (e in allowed) { split(e, p, SUBSEP); out[p[1]] = out[p[1]] " " p[2]; nodes[p[1]]; nodes[p[2]] }
    acyclic("grafo")
    exit bad
}' <<<"$includes"
