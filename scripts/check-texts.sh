#!/usr/bin/env bash
# Fails when a box is given its words at the call site: a DialogPort call (message, warn,
# critical, info, ask, input), tell/askNotice or a Notice/PrinterMessage built in src/ whose
# arguments hold a string literal.
# The system's texts, titles included, are entries of src/common/SystemTexts.cpp, so that a
# screen and a command show the same words. Usage: check-texts.sh [files...] (default: src/).
set -euo pipefail
cd "$(dirname "$0")/.."

if [ "$#" -eq 0 ]; then
    mapfile -t files < <(find src -name '*.cpp' -o -name '*.h' | sort)
else
    files=("$@")
fi

perl -e '
use strict;
use warnings;
my $bad = 0;
for my $file (@ARGV) {
    open(my $fh, "<", $file) or die "$file: $!\n";
    local $/;
    my $src = <$fh>;
    close $fh;
    # Comments become blanks (newlines kept, for the line numbers); strings and characters stay.
    my ($out, $n, $i) = ("", length $src, 0);
    while ($i < $n) {
        my $c = substr($src, $i, 1);
        my $two = substr($src, $i, 2);
        if ($two eq "//") {
            $i++ while $i < $n && substr($src, $i, 1) ne "\n";
        } elsif ($two eq "/*") {
            my $end = index($src, "*/", $i + 2);
            $end = $n - 2 if $end < 0;
            my $gone = substr($src, $i, $end + 2 - $i);
            $out .= "\n" x ($gone =~ tr/\n//);
            $i = $end + 2;
        } elsif ($c eq "\"" || $c eq "\x27") {
            my $j = $i + 1;
            while ($j < $n && substr($src, $j, 1) ne $c) {
                $j++ if substr($src, $j, 1) eq "\\";
                $j++;
            }
            $out .= substr($src, $i, $j + 1 - $i);
            $i = $j + 1;
        } else {
            $out .= $c;
            $i++;
        }
    }
    my $call = qr/(?:\b(?:m_)?(?:dialogs|port)\s*(?:\.|->)\s*(?:message|warn|critical|info|ask|input)\s*\(|(?<![\w.:>])(?:tell|askNotice)\s*\(|\b(?:Notice|PrinterMessage)(?:\s+\w+)?\s*\{)/;
    while ($out =~ /$call/g) {
        my $start = pos($out);
        my ($open, $close) = substr($out, $start - 1, 1) eq "{" ? ("{", "}") : ("(", ")");
        my ($depth, $j, $literal) = (1, $start, 0);
        while ($j < length($out) && $depth > 0) {
            my $c = substr($out, $j, 1);
            if ($c eq "\"") {
                $literal = 1;
                $j++;
                while ($j < length($out) && substr($out, $j, 1) ne "\"") {
                    $j++ if substr($out, $j, 1) eq "\\";
                    $j++;
                }
            } elsif ($c eq "\x27") {
                $j += substr($out, $j + 1, 1) eq "\\" ? 3 : 2;
            } elsif ($c eq $open) {
                $depth++;
            } elsif ($c eq $close) {
                $depth--;
            }
            $j++;
        }
        next unless $literal;
        my $line = 1 + (substr($out, 0, $start) =~ tr/\n//);
        (my $args = substr($out, $start, $j - $start - 1)) =~ s/\s+/ /g;
        print "$file:$line: text written at the call, not taken from SystemTexts: ($args)\n";
        $bad = 1;
    }
}
exit $bad;
' "${files[@]}"
