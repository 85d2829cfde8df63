#!/bin/sh
# Makes every picture of the user guide (docs/user-guide.html) in docs/images/guide-*.png, and
# docs/images/parvex-config.png through docs/screenshot.sh:
#   - forms and dialogs the test suites render into <build>/gallery/ (the suites are run first),
#     cropped where they show more than the guide talks about;
#   - the application itself on the built-in simulated sensor, on a virtual X display, driven with
#     xdotool: the menus, the connection dialog, the preferences, the status bar while recording,
#     the "System State" window and the question about old firmware.
#   docs/guide-screenshots.sh [build directory, default build/default]
#   GALLERY=keep docs/guide-screenshots.sh ...   (the suites' pictures as they are)
# Needs a built tree (parvex-config and the test suites), xvfb-run, ImageMagick and xdotool.
# The clicks below land on the menus and list entries of the default Qt style at 1600x1000; a
# change of the menus' order moves them.
set -eu
top=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "${1:-"$top/build/default"}" && pwd)
images="$top/docs/images"
for tool in xvfb-run xdotool import convert; do
  command -v "$tool" >/dev/null || { echo "$0: $tool is not installed" >&2; exit 1; }
done

# ---- Pictures the test suites render ------------------------------------------------------------
# GALLERY=keep takes the pictures already in the gallery instead of running the suites again.
if [ "${GALLERY:-}" != keep ]; then
  ctest --test-dir "$build" -L 'sensorui|displays|widgets|app|replay|serial|base' --output-on-failure >/dev/null
fi
gallery="$build/gallery"
# Pictures stay small: no metadata, and 256 colours are plenty for forms.
keep() { # source name [convert options...]
  src="$1"
  name="$2"
  shift 2
  convert "$src" "$@" +repage -strip -colors 256 "$images/$name.png"
}
keep "$gallery/connection-dialog-tcp-timed-out.png" guide-connect-tcp
keep "$gallery/widgets_sim_config_form.png" guide-settings -crop 591x600+0+0
keep "$gallery/echoes_graph_warning_2s_later.png" guide-attention
keep "$gallery/text_prompt.png" guide-comment
keep "$gallery/trace_form_offsets.png" guide-traces
keep "$gallery/echo_form.png" guide-echo-table
keep "$gallery/replay_form.png" guide-replay
keep "$gallery/serial_port_viewer.png" guide-serial-port
keep "$gallery/update-select-dialog.png" guide-update-select
keep "$gallery/code-update-dialog-progress.png" guide-update-progress
keep "$gallery/calibration-editor.png" guide-calibration
keep "$gallery/debug-form.png" guide-debug
keep "$gallery/error_log_form.png" guide-error-log

# ---- The application -----------------------------------------------------------------------------
home=$(mktemp -d)
shots=$(mktemp -d)
trap 'rm -rf "$home" "$shots"' EXIT
export XDG_CONFIG_HOME="$home/config" XDG_DATA_HOME="$home/data" HOME="$home"

cat >"$shots/drive.sh" <<'DRIVE'
#!/bin/sh
# Runs inside the virtual display: $1 the program, $2 the folder for the raw screenshots.
set -eu
app="$1"
out="$2"
# The id of the visible window named exactly $1, once it is there.
window() {
  for i in $(seq 50); do
    id=$(xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | head -n 1) || true
    [ -n "$id" ] && { echo "$id"; return 0; }
    sleep 0.2
  done
  echo "no window \"$1\"" >&2
  return 1
}
click() { xdotool mousemove "$1" "$2" click 1; sleep 0.8; }
menu() { click "$1" 10; } # a menu of the main window's menu bar, by its x position

"$app" --connect none & pid=$!
main=$(window "Parvex Configuration")
sleep 1
menu 68 # Device
click 110 34 # Connect...
import -window "$(window Connection)" "$out/connect-sim.png"
xdotool key Return # Connect, on the simulated sensor
sleep 3
import -window "$main" "$out/main.png"
menu 20 # File
import -window root -crop 300x190+0+0 "$out/menu-file.png"
xdotool key Escape
menu 68 # Device
import -window root -crop 300x190+0+0 "$out/menu-device.png"
xdotool key Escape
menu 120 # View
import -window root -crop 330x190+0+0 "$out/menu-view.png"
xdotool key Escape
menu 175 # Settings
click 210 34 # Preferences...
prefs=$(window Preferences)
sleep 0.5
import -window "$prefs" "$out/preferences-units.png"
click 275 156 # Recorder
import -window "$prefs" "$out/preferences-recorder.png"
xdotool key Escape
sleep 0.5
menu 20
click 90 109 # Start Recording
menu 20
click 90 134 # Start Data Logging
sleep 3.2
import -window "$main" "$out/recording.png"
menu 20
click 90 109 # Stop Recording
menu 20
click 90 134 # Stop Data Logging
# Last: the window floats over the top left corner, menu bar included.
menu 120
click 160 59 # State
sleep 2
import -window "$(window "System State")" "$out/state.png"
kill "$pid"
wait "$pid" || true

# Older firmware: the update is offered as soon as the sensor connects.
"$app" --old-firmware & pid=$!
import -window "$(window parvex-config)" "$out/old-firmware.png"
kill "$pid"
wait "$pid" || true
DRIVE
xvfb-run -a -s "-screen 0 1600x1000x24" sh "$shots/drive.sh" "$build/app/parvex-config" "$shots" 2>"$shots/log" || {
  cat "$shots/log" >&2
  exit 1
}
keep "$shots/connect-sim.png" guide-connect-sim
keep "$shots/main.png" guide-main-window
convert "$shots/menu-file.png" "$shots/menu-device.png" "$shots/menu-view.png" -background white -splice 12x0 +append \
  +repage -strip -colors 256 "$images/guide-menus.png"
keep "$shots/state.png" guide-system-state
keep "$shots/preferences-units.png" guide-preferences-units
keep "$shots/preferences-recorder.png" guide-preferences-recorder
# The right end of the status bar: the connection, the frames, and the running record and log.
keep "$shots/recording.png" guide-status-bar -gravity SouthEast -crop 840x26+0+0
keep "$shots/old-firmware.png" guide-old-firmware

sh "$top/docs/screenshot.sh" "$build"
ls -l "$images"
