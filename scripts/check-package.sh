#!/usr/bin/env bash
# Checks a built tolvane .deb: lintian finds no error, and the package holds the program, its
# menu entry, icons, AppStream data, manual page and documents, and no maintainer script.
set -euo pipefail
deb=${1:?usage: check-package.sh tolvane_VERSION_ARCH.deb}

lintian --fail-on error --tag-display-limit 0 "$deb"

contents=$(dpkg-deb --contents "$deb")
echo "$contents"
for path in ./usr/bin/tolvane \
  ./usr/share/applications/org.tolvane.Tolvane.desktop \
  ./usr/share/metainfo/org.tolvane.Tolvane.metainfo.xml \
  ./usr/share/icons/hicolor/scalable/apps/tolvane.svg \
  ./usr/share/icons/hicolor/48x48/apps/tolvane.png \
  ./usr/share/man/man1/tolvane.1.gz \
  ./usr/share/doc/tolvane/copyright \
  ./usr/share/doc/tolvane/changelog.gz \
  ./usr/share/doc/tolvane/README.md; do
  if ! grep -q " $path\$" <<<"$contents"; then
    echo "check-package: $path is missing from $deb" >&2
    exit 1
  fi
done

unpacked=$(mktemp -d)
trap 'rm -rf "$unpacked"' EXIT
dpkg-deb -x "$deb" "$unpacked"
appstreamcli validate --no-net "$unpacked"/usr/share/metainfo/org.tolvane.Tolvane.metainfo.xml

# Installing and removing must never touch a data folder: no maintainer scripts at all.
control=$(dpkg-deb --ctrl-tarfile "$deb" | tar -t)
if grep -Eq '(pre|post)(inst|rm)$' <<<"$control"; then
  echo "check-package: $deb has maintainer scripts" >&2
  exit 1
fi
dpkg-deb --field "$deb" Package Version Depends
echo "check-package: $deb is complete"
