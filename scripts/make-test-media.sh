#!/bin/sh
# Makes the small media files of tests/media/ that FFmpeg can make: sines, 0.12 s.
#
#   scripts/make-test-media.sh OUTDIR
#
# The same FFmpeg makes the same bytes each time.
set -eu

if [ $# -ne 1 ]; then
  echo "usage: $0 OUTDIR" >&2
  exit 2
fi
here=$(cd "$(dirname "$0")" && pwd)
dolby_e="$here/../tests/media/make_dolby_e.py"
mkdir -p "$1"
cd "$1"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

seconds=0.12
tone="aevalsrc=sin(880*PI*t)/8:s=48000:d=$seconds"
tone_44100="aevalsrc=sin(880*PI*t)/8:s=44100:d=$seconds"
picture="color=size=64x64:rate=25:duration=$seconds"

# make OUT OPTIONS...: with FFmpeg, nothing of which depends on the time or the machine.
make() {
  out=$1
  shift
  ffmpeg -v error -nostdin -y -fflags +bitexact "$@" \
    -fflags +bitexact -flags:v +bitexact -flags:a +bitexact -map_metadata -1 "$out"
}

# maps N: the second input N times.
maps() {
  for _ in $(seq "$1"); do printf ' -map 1'; done
}

# pan LAYOUT CHANNELS: a filter that puts the tone on every channel.
pan() {
  printf 'pan=%s' "$1"
  for channel in $(seq 0 $(($2 - 1))); do printf '|c%s=c0' "$channel"; done
}

surround_and_stereo() {
  printf '[%s]asplit[a][b];[a]%s[mix];[b]%s[pair]' "$1" "$(pan "$2" 6)" "$(pan stereo 2)"
}

# shellcheck disable=SC2046 # the words of maps are meant to be split
# MXF: 8 and 16 mono tracks; 5.1 + stereo in two tracks; the same cut off; a picture alone.
make mxf_8mono.mxf -f lavfi -i "$picture" -f lavfi -i "$tone" -map 0 $(maps 8) \
  -c:v mpeg2video -c:a pcm_s24le
# shellcheck disable=SC2046
make mxf_16mono.mxf -f lavfi -i "$picture" -f lavfi -i "$tone" -map 0 $(maps 16) \
  -c:v mpeg2video -c:a pcm_s16le
make mxf_51_stereo.mxf -f lavfi -i "$picture" -f lavfi -i "$tone" \
  -filter_complex "$(surround_and_stereo 1 5.1)" -map 0 -map '[mix]' -map '[pair]' \
  -c:v mpeg2video -c:a pcm_s16le
head -c 30000 mxf_8mono.mxf > mxf_truncated.mxf
make mxf_no_audio.mxf -f lavfi -i "$picture" -c:v mpeg2video

# MOV: 5.1 + stereo with side and with back channels, the latter as six mono tracks too.
make mov_51side_stereo.mov -f lavfi -i "$tone" \
  -filter_complex "$(surround_and_stereo 0 '5.1(side)')" -map '[mix]' -map '[pair]' \
  -c:a pcm_s16le
make mov_51back_stereo.mov -f lavfi -i "$tone" \
  -filter_complex "$(surround_and_stereo 0 5.1)" -map '[mix]' -map '[pair]' -c:a pcm_s16le
make mov_6mono_back.mov -f lavfi -i "$tone" \
  -filter_complex "[0]asplit=6[a][b][c][d][e][f];[a]pan=FL|c0=c0[A];[b]pan=FR|c0=c0[B];\
[c]pan=FC|c0=c0[C];[d]pan=LFE|c0=c0[D];[e]pan=BL|c0=c0[E];[f]pan=BR|c0=c0[F]" \
  -map '[A]' -map '[B]' -map '[C]' -map '[D]' -map '[E]' -map '[F]' -c:a pcm_s16le
make mov_mixed_rates.mov -f lavfi -i "$tone" -f lavfi -i "$tone_44100" -map 0 -map 1 \
  -c:a pcm_s16le
make mov_mixed_depths.mov -f lavfi -i "$tone" -map 0 -map 0 -c:a:0 pcm_s16le -c:a:1 pcm_s24le

# Wave and its kin: 5.1 with a channel mask, 8 channels without one, mono, RF64, AIFF, CAF.
make wav_51back.wav -f lavfi -i "$tone" -filter_complex "$(pan 5.1 6)" -c:a pcm_s16le
make "$work/8.raw" -f lavfi -i "$tone" -filter_complex "$(pan 7.1 8)" -c:a pcm_s16le -f s16le
make wav_8ch_no_mask.wav -guess_layout_max 0 -f s16le -ar 48000 -ac 8 -i "$work/8.raw" -c:a copy
make wav_mono.wav -f lavfi -i "$tone" -c:a pcm_s24le
make rf64_stereo.wav -f lavfi -i "$tone" -filter_complex "$(pan stereo 2)" -c:a pcm_s16le \
  -rf64 always
make aiff_stereo.aiff -f lavfi -i "$tone" -filter_complex "$(pan stereo 2)" -c:a pcm_s16be
make caf_stereo.caf -f lavfi -i "$tone" -filter_complex "$(pan stereo 2)" -c:a pcm_s16be

# Coded audio: AAC in MP4, AC-3 and MP2 in MPEG-TS, PCM in MKV, AC-3 in a Wave file (IEC 61937).
make mp4_aac_51.mp4 -f lavfi -i "$tone" -filter_complex "$(pan 5.1 6)" -c:a aac
make ts_ac3_51_mp2.ts -f lavfi -i "$picture" -f lavfi -i "$tone" \
  -filter_complex "$(surround_and_stereo 1 5.1)" -map 0 -map '[mix]' -map '[pair]' \
  -c:v mpeg2video -c:a:0 ac3 -c:a:1 mp2
make mkv_2mono.mkv -f lavfi -i "$tone" -map 0 -map 0 -c:a pcm_s16le
make "$work/ac3.spdif" -f lavfi -i "$tone" -filter_complex "$(pan 5.1 6)" -c:a ac3 -f spdif
make wav_ac3_iec61937.wav -f s16le -ar 48000 -ac 2 -i "$work/ac3.spdif" -c:a copy

# Dolby E: a Wave file of one pair, of one programme and of two; six channels of which 3/4 carry
# it, as a Wave file with and without a mask, and as one of two tracks; two pairs of 2 and 4
# programmes between stereo tracks.
python3 "$dolby_e" --frames 4 wav_dolby_e.wav
python3 "$dolby_e" --frames 4 --config 11 wav_dolby_e_one_programme.wav
python3 "$dolby_e" --frames 4 --config 6 "$work/four.wav"
python3 "$dolby_e" --frames 3 --channels 6 --pair 2 wav_6ch_dolby_e.wav
make wav_6ch_dolby_e_mask.wav -i wav_6ch_dolby_e.wav -c:a copy
make mov_6ch_dolby_e.mov -i wav_6ch_dolby_e.wav -c:a copy
make mov_6ch_dolby_e_stereo.mov -i wav_6ch_dolby_e.wav -f lavfi -i "$tone" \
  -filter_complex "[1]$(pan stereo 2)[pair]" -map 0 -map '[pair]' -c:a:0 copy -c:a:1 pcm_s24le
make mov_dolby_e_2_and_4.mov -f lavfi -i "$tone" -i wav_dolby_e.wav -i "$work/four.wav" \
  -filter_complex "[0]$(pan stereo 2),asplit[first][last]" \
  -map '[first]' -map 1 -map 2 -map '[last]' -c:a pcm_s24le -c:a:1 copy -c:a:2 copy
