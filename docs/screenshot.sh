#!/bin/sh
# Makes docs/images/parvex-config.png: parvex-config on the built-in simulated sensor, with the
# state, trace, raw-detection and settings forms open around the echoes graph, on a virtual X
# display. The forms come from a saved layout, as they do for a user who left them open.
#   docs/screenshot.sh [build directory, default build/default]
set -eu
top=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-"$top/build/default"}
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
mkdir -p "$home/config/Parvex"
cat >"$home/config/Parvex/parvex-config.conf" <<'INI'
[MainWindow]
State=@ByteArray()

[Parvex%2016]
Layout\Windows\1\Id=1
Layout\Windows\1\Floating=true
Layout\Windows\1\Flags=0
Layout\Windows\1\Left=1110
Layout\Windows\1\Top=0
Layout\Windows\1\Width=800
Layout\Windows\1\Height=420
Layout\Windows\2\Id=3
Layout\Windows\2\Floating=true
Layout\Windows\2\Flags=3
Layout\Windows\2\Left=0
Layout\Windows\2\Top=705
Layout\Windows\2\Width=1100
Layout\Windows\2\Height=370
Layout\Windows\3\Id=4
Layout\Windows\3\Floating=true
Layout\Windows\3\Flags=0
Layout\Windows\3\Left=1110
Layout\Windows\3\Top=430
Layout\Windows\3\Width=800
Layout\Windows\3\Height=300
Layout\Windows\4\Id=16
Layout\Windows\4\Floating=true
Layout\Windows\4\Flags=0
Layout\Windows\4\Left=1110
Layout\Windows\4\Top=740
Layout\Windows\4\Width=800
Layout\Windows\4\Height=335
Layout\Windows\size=4
INI
XDG_CONFIG_HOME="$home/config" XDG_DATA_HOME="$home/data" HOME="$home" \
  xvfb-run -a -s "-screen 0 1920x1080x24" sh -c "
    '$build/app/parvex-config' & app=\$!
    sleep 8
    import -window root '$top/docs/images/parvex-config.png'
    kill \$app"
echo "wrote $top/docs/images/parvex-config.png"
