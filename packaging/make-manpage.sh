#!/bin/sh
# Writes the manual page tolvane(1): the summary of every command from `tolvane --help`, then the
# command-line guide docs/CLI.md turned into troff. Usage: make-manpage.sh TOLVANE CLI.md VERSION OUT
set -eu
exe=$1 guide=$2 version=$3 out=$4

# Troff escapes: backslashes, then a dot or quote that would open a request at a line's start.
escape='s/\\/\\e/g; s/^\([.'"'"']\)/\\\&\1/'

{
  printf '.TH TOLVANE 1 "%s" "tolvane %s" "Comandos do usu\\('"'"'ario"\n' \
    "$(date -u -d "@${SOURCE_DATE_EPOCH:-$(date +%s)}" +%Y-%m-%d)" "$version"
  printf '.SH NOME\ntolvane \\- caixa de arrecada\\(,c\\(~ao municipal\n'
  printf '.SH SINOPSE\n.B tolvane\n[\\fB\\-\\-pasta\\fR \\fIPASTA\\fR] [\\fICOMANDO\\fR ...]\n'
  printf '.SH DESCRI\\(,C\\(~AO\n'
  printf 'Sem comando, abre o programa (tela de data e depois o caixa); na primeira vez, sem pasta\n'
  printf 'de dados, oferece cri\\('"'"'a-la. Com um comando, roda sem tela sobre o mesmo n\\('"'"'ucleo.\n'
  printf '.SH COMANDOS\n'
  # Each "  tolvane ... SYNOPSIS" line of the help, with its summary on the next line.
  "$exe" --help | sed -n '/^  tolvane/,$p' | sed "$escape" | awk '
    /^  tolvane/ { sub(/^  /, ""); print ".TP"; print "\\fB" $0 "\\fR"; next }
    /^      / { sub(/^ +/, ""); print; next }
    /^$/ { exit }'
  printf '.SH GUIA DA LINHA DE COMANDO\n'
  # docs/CLI.md without its title: sections, subsections, lists, code and tables.
  sed "$escape" "$guide" | awk '
    function inline(s) {
      while (match(s, /\*\*[^*]+\*\*/)) s = substr(s, 1, RSTART - 1) "\\fB" substr(s, RSTART + 2, RLENGTH - 4) "\\fR" substr(s, RSTART + RLENGTH)
      while (match(s, /`[^`]+`/)) s = substr(s, 1, RSTART - 1) "\\fB" substr(s, RSTART + 1, RLENGTH - 2) "\\fR" substr(s, RSTART + RLENGTH)
      return s
    }
    NR == 1 && /^# / { next }
    /^```/ { code = !code; print (code ? ".nf" : ".fi"); next }
    code { print; next }
    /^## / { sub(/^## /, ""); print ".SS \"" inline($0) "\""; next }
    /^### / { sub(/^### /, ""); print ".TP"; print inline($0); item = 1; next }
    /^\|[-| :]+\|$/ { next }
    /^\|/ { gsub(/^\| *| *\|$/, ""); gsub(/ *\| */, " \\(em "); print ".br"; print inline($0); next }
    /^- / { sub(/^- /, ""); print ".IP \\(bu 2"; print inline($0); next }
    /^$/ { if (!item) print ".PP"; next }
    { item = 0; print inline($0) }'
  printf '.SH ARQUIVOS\n'
  printf '.TP\n\\fI~/.local/share/Tolvane/\\fR\nPasta de dados do usu\\('"'"'ario: \\fBConfig.ini\\fR, \\fBcaixa.db\\fR, \\fBLog.ini\\fR.\n'
  printf '.TP\n\\fI/usr/share/doc/tolvane/\\fR\nOs documentos do programa.\n'
} >"$out"
