# Shell helpers shared by the demo and the package test: polling, and a private MPD with silent songs.
# Source it; it defines functions only.

# Polls until the command succeeds, for at most ten seconds.
wait_for() {
    for _ in $(seq 100); do
        if "$@" >/dev/null 2>&1; then return 0; fi
        sleep 0.1
    done
    return 1
}

# Little-endian integers and a WAV file of silence (8-bit mono at 4 kHz), so no audio tool is needed.
le() { # value bytes
    local value=$1 byte
    for ((byte = 0; byte < $2; byte++)); do
        printf "\\$(printf %03o $(((value >> (8 * byte)) & 255)))"
    done
}
silence() { # file seconds
    local size=$((4000 * $2))
    mkdir -p "$(dirname "$1")"
    {
        printf 'RIFF'; le $((36 + size)) 4; printf 'WAVEfmt '; le 16 4; le 1 2; le 1 2
        le 4000 4; le 4000 4; le 1 2; le 8 2; printf 'data'; le "$size" 4
        head -c "$size" /dev/zero | tr '\0' '\200'
    } >"$1"
}

# Starts MPD in the background in <folder>, with the playlists "Road Trip" and "Focus" of silent songs,
# and exports MPD_HOST for it; the new process is appended to the caller's `pids` array. Fails with the
# end of MPD's log when it does not come up.
start_private_mpd() { # folder
    local work=$1 song
    mkdir -p "$work/music" "$work/playlists"
    local road_trip=("Road Trip/01 Highway.wav" "Road Trip/02 Desert.wav" "Road Trip/03 Coast.wav")
    local focus=("Focus/01 Rain.wav" "Focus/02 Library.wav")
    for song in "${road_trip[@]}" "${focus[@]}"; do
        silence "$work/music/$song" 300
    done
    printf '%s\n' "${road_trip[@]}" >"$work/playlists/Road Trip.m3u"
    printf '%s\n' "${focus[@]}" >"$work/playlists/Focus.m3u"
    cat >"$work/mpd.conf" <<CONF
music_directory    "$work/music"
playlist_directory "$work/playlists"
db_file            "$work/mpd.db"
log_file           "$work/mpd.log"
bind_to_address    "$work/mpd.socket"
auto_update        "no"
zeroconf_enabled   "no"
audio_output {
    type "null"
    name "null"
}
CONF
    export MPD_HOST="$work/mpd.socket"
    mpd --no-daemon "$work/mpd.conf" >"$work/mpd.out" 2>&1 &
    pids+=($!)
    if ! wait_for mpc status; then
        echo "mpd did not start: $(tail -5 "$work/mpd.out" "$work/mpd.log" 2>/dev/null)" >&2
        return 1
    fi
    mpc -q update --wait
}
