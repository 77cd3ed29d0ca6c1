#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# usage: ServerTest.sh MODULE FOLDER
# Speaks through a server of its own, whose sound goes to a file: what a screen reader's user would hear.
set -euo pipefail
if ! command -v speech-dispatcher > /dev/null; then
    echo "skipped: speech-dispatcher is not installed"
    exit 77
fi
module=$1
folder=$2
rm -rf "$folder"
mkdir -p "$folder"
cd "$folder"

cat > speechd.conf <<END
LogLevel 3
LogDir "$folder"
AudioOutputMethod "alsa"
DefaultVolume 100
AddModule "larynth" "$module" ""
DefaultModule larynth
END
cat > asound.conf <<END
pcm.!default { type file slave.pcm { type null } file "$folder/sound.raw" format "raw" }
ctl.!default { type hw card 0 }
END

fail() {
    echo "ServerTest: expected $1" >&2
    cat speech-dispatcher.log >&2
    exit 1
}

export ALSA_CONFIG_PATH=$folder/asound.conf SPEECHD_ADDRESS=unix_socket:$folder/socket XDG_RUNTIME_DIR=$folder
speech-dispatcher -s -C "$folder" -S "$folder/socket" -P "$folder/pid" 2> /dev/null &
trap 'kill %1 2>/dev/null || true' EXIT
for _ in {1..100}; do [ -S socket ] && break; sleep 0.1; done
[ -S socket ] || fail "a server"

spd-say -O | grep -x larynth > /dev/null || fail "the module among the server's"
spd-say -o larynth -L | grep whisper > /dev/null || fail "the speakers among the module's voices"
timeout 20 spd-say -o larynth -w "Hello, world." || fail "to be told when it was said"
short=$(stat -c %s sound.raw)
[ "$short" -gt 20000 ] || fail "sound of more than 0.6 s, found $short bytes"
timeout 30 spd-say -o larynth -w -r -50 "Hello, world." || fail "to be told when it was said slowly"
slow=$(($(stat -c %s sound.raw) - short))
[ "$slow" -gt $((short * 5 / 4)) ] || fail "slow speech to be longer than $short bytes, found $slow"
told=$(timeout 20 spd-say -o larynth -w -x '<speak>One <mark name="here"/> two.</speak>' 2>&1)
[ "$told" = "reached mark 'here'" ] || fail "to be told of the mark, found $told"
