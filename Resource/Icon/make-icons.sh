#!/usr/bin/env bash
# Draws the program's icons, one 32x32 PNG per tag, with ImageMagick. Run it from this folder
# after changing a drawing; the PNG files are kept in the repository, so a build needs no
# ImageMagick.
set -euo pipefail
cd "$(dirname "$0")"

FONT=DejaVu-Sans-Bold
BASE=(-size 32x32 xc:none -strokewidth 2)

icon() { # name, drawing arguments...
    local name=$1
    shift
    convert "${BASE[@]}" "$@" -strip "PNG32:$name.png"
}

# A bar button and its pressed twin: the pressed one sits on a dark rounded plate.
bar_icon() { # name, drawing arguments...
    local name=$1
    shift
    convert "${BASE[@]}" -fill '#e8ecf0' -stroke '#8a96a3' -draw "roundrectangle 1,1 30,30 5,5" "$@" \
        -strip "PNG32:$name.png"
    convert "${BASE[@]}" -fill '#5b6b7c' -stroke '#3a4654' -draw "roundrectangle 1,1 30,30 5,5" "$@" \
        -strip "PNG32:${name}_P.png"
}

# ---- status bar ----
icon wxART_ABORT -fill '#d03030' -stroke '#901010' -draw "circle 16,16 16,2" \
    -stroke white -strokewidth 4 -draw "line 10,10 22,22" -draw "line 22,10 10,22"

# ---- ribbon: files and edits ----
FOLDER=(-fill '#f2c14e' -stroke '#a87a12' -draw "polygon 2,8 12,8 15,11 30,11 30,27 2,27")
icon wxART_OPEN_FILE "${FOLDER[@]}" -fill '#f8d77e' -draw "polygon 2,27 7,15 31,15 30,27"
icon wxART_OPEN_HISTORY "${FOLDER[@]}" -fill white -stroke '#2f5f9f' -draw "circle 21,20 21,12" \
    -draw "line 21,20 21,14" -draw "line 21,20 26,20"
DISK=(-fill '#3b73b9' -stroke '#1d3f6b' -draw "polygon 3,3 25,3 29,7 29,29 3,29"
      -fill white -stroke none -draw "rectangle 8,4 22,12" -fill '#dfe7f1' -draw "rectangle 7,18 25,28")
icon wxART_SAVE_FILE "${DISK[@]}"
icon wxART_SAVE_FILE_AS "${DISK[@]}" -fill '#f2a33a' -stroke '#8c5a10' -draw "polygon 14,26 27,13 31,17 18,30 13,31"
icon wxART_SCENE -fill '#9fd0f5' -stroke '#3b6f99' -draw "rectangle 2,4 29,27" \
    -fill '#f7d23e' -stroke none -draw "circle 22,10 22,6" \
    -fill '#4f9a45' -draw "polygon 3,26 11,14 17,22 21,17 28,26"
icon wxART_UNDO -fill none -stroke '#2f6fb5' -strokewidth 4 -draw "arc 6,8 28,28 200,360" \
    -fill '#2f6fb5' -stroke none -draw "polygon 1,12 13,12 7,22"
icon wxART_REDO -fill none -stroke '#2f6fb5' -strokewidth 4 -draw "arc 4,8 26,28 180,340" \
    -fill '#2f6fb5' -stroke none -draw "polygon 19,12 31,12 25,22"

# ---- ribbon: data viewers ----
icon wxART_VOLUMEBOX -fill '#7fb2e580' -stroke '#24507f' -draw "polygon 4,10 20,10 20,28 4,28" \
    -draw "polygon 4,10 12,3 28,3 20,10" -draw "polygon 20,10 28,3 28,21 20,28"
icon wxART_ISOSURFACE -fill '#e07b39' -stroke '#8c3f10' -draw "ellipse 16,17 13,10 0,360" \
    -fill '#f4b183' -stroke none -draw "ellipse 12,13 5,3 0,360"
icon wxART_PARTICLE -fill '#2f6fb5' -stroke none -draw "circle 6,8 6,5" -draw "circle 17,6 17,3" \
    -draw "circle 26,11 26,8" -draw "circle 10,18 10,15" -draw "circle 21,19 21,16" \
    -draw "circle 6,27 6,24" -draw "circle 16,27 16,25" -draw "circle 27,26 27,23"
icon wxART_STREAMLINE -fill none -stroke '#1f8f7a' -draw "bezier 2,8 10,2 20,14 30,6" \
    -draw "bezier 2,17 10,11 20,23 30,15" -draw "bezier 2,26 10,20 20,32 30,24"
icon wxART_HEIGHTFIELD -fill '#7a9a4a' -stroke '#3f5520' -draw "polygon 1,29 7,15 12,21 19,7 25,17 31,12 31,29"

# ---- ribbon: objects and settings ----
icon wxART_NEW_OBJ -fill '#3fa34d' -stroke '#1e6b29' -draw "circle 16,16 16,2" \
    -stroke white -strokewidth 4 -draw "line 16,8 16,24" -draw "line 8,16 24,16"
icon wxART_DUPLICATE -fill '#c9d9ee' -stroke '#355f8f' -draw "rectangle 3,3 19,19" \
    -fill '#8fb3df' -draw "rectangle 12,12 28,28"
icon wxART_CLEAR -fill '#c8ccd2' -stroke '#555c66' -draw "polygon 7,9 25,9 23,29 9,29" \
    -draw "line 5,7 27,7" -draw "line 13,4 19,4" -stroke '#d03030' -strokewidth 3 -draw "line 12,13 20,25" \
    -draw "line 20,13 12,25"
icon wxART_PREFERENCE -fill none -stroke '#555c66' -strokewidth 3 -draw "line 4,8 28,8" \
    -draw "line 4,16 28,16" -draw "line 4,24 28,24" -fill '#2f6fb5' -stroke '#1d3f6b' -strokewidth 2 \
    -draw "circle 10,8 10,4" -draw "circle 22,16 22,12" -draw "circle 14,24 14,20"
icon wxART_MEMORY -fill '#3a3f47' -stroke '#16191d' -draw "rectangle 6,6 26,26" \
    -stroke '#c7a03a' -draw "line 10,2 10,6" -draw "line 16,2 16,6" -draw "line 22,2 22,6" \
    -draw "line 10,26 10,30" -draw "line 16,26 16,30" -draw "line 22,26 22,30" \
    -draw "line 2,11 6,11" -draw "line 2,21 6,21" -draw "line 26,11 30,11" -draw "line 26,21 30,21"

# ---- ribbon: help ----
icon wxART_INFO -fill '#2f6fb5' -stroke '#1d3f6b' -draw "circle 16,16 16,2" \
    -fill white -stroke none -font $FONT -pointsize 22 -gravity center -annotate +0+1 "i"
icon wxART_HELP -fill '#3fa34d' -stroke '#1e6b29' -draw "circle 16,16 16,2" \
    -fill white -stroke none -font $FONT -pointsize 20 -gravity center -annotate +0+1 "?"
icon wxART_TIPS -fill '#f7d23e' -stroke '#9a7a10' -draw "circle 16,13 16,3" \
    -fill '#8a8f96' -stroke '#4a4f56' -draw "rectangle 11,22 21,29" -draw "line 11,25 21,25"

# ---- panel types ----
icon wxART_TIMELINE -fill none -stroke '#404850' -draw "line 2,20 30,20" \
    -draw "line 4,16 4,24" -draw "line 10,18 10,22" -draw "line 16,16 16,24" -draw "line 22,18 22,22" \
    -draw "line 28,16 28,24" -stroke '#d03030' -strokewidth 3 -draw "line 19,5 19,28" \
    -fill '#d03030' -stroke none -draw "polygon 14,3 24,3 19,9"
icon wxART_OUTLINER -fill none -stroke '#404850' -draw "line 6,6 6,26" -draw "line 6,16 12,16" \
    -draw "line 6,26 12,26" -fill '#2f6fb5' -stroke none -draw "rectangle 2,3 10,9" \
    -draw "rectangle 14,13 29,19" -draw "rectangle 14,23 29,29" -draw "rectangle 14,3 29,9"
icon wxART_PROPERTY -fill '#f4f6f8' -stroke '#555c66' -draw "rectangle 3,2 29,30" \
    -fill '#2f6fb5' -stroke none -draw "rectangle 6,6 12,10" -draw "rectangle 6,14 12,18" -draw "rectangle 6,22 12,26" \
    -fill '#9aa3ad' -draw "rectangle 15,7 26,9" -draw "rectangle 15,15 26,17" -draw "rectangle 15,23 26,25"
icon wxART_VIEW3D -fill none -stroke '#2f6fb5' -draw "rectangle 4,11 20,27" -draw "rectangle 12,4 28,20" \
    -draw "line 4,11 12,4" -draw "line 20,11 28,4" -draw "line 20,27 28,20" -draw "line 4,27 12,20"
icon wxART_GRAPH -fill none -stroke '#404850' -draw "line 4,2 4,28" -draw "line 4,28 30,28" \
    -stroke '#d03030' -strokewidth 3 -draw "bezier 5,25 12,25 14,6 28,5"
icon wxART_COLOR_CURVE -size 32x32 \( gradient:blue-red -rotate 90 -resize 28x8! \) -geometry +2+22 -composite \
    -fill none -stroke '#303030' -strokewidth 2 -draw "bezier 3,18 12,18 18,3 29,3"
icon wxART_TEXT -fill '#f4f6f8' -stroke '#555c66' -draw "polygon 5,2 21,2 27,8 27,30 5,30" \
    -stroke '#404850' -draw "line 9,10 22,10" -draw "line 9,15 23,15" -draw "line 9,20 23,20" -draw "line 9,25 18,25"
icon wxART_CONSOLE -fill '#1d2127' -stroke '#555c66' -draw "rectangle 2,4 29,28" \
    -fill none -stroke '#4fd06a' -strokewidth 3 -draw "polyline 7,11 12,16 7,21" -draw "line 15,22 24,22"

# ---- panel bar ----
bar_icon wxART_SPLITTER_H -fill none -stroke '#303840' -draw "rectangle 7,7 24,24" -draw "line 7,16 24,16"
bar_icon wxART_SPLITTER_V -fill none -stroke '#303840' -draw "rectangle 7,7 24,24" -draw "line 16,7 16,24"
bar_icon wxART_SPLITTER_D -fill none -stroke '#c02828' -strokewidth 3 -draw "line 9,9 23,23" -draw "line 23,9 9,23"
bar_icon wxART_HIDE -fill none -stroke '#303840' -strokewidth 3 -draw "polyline 15,8 8,16 15,24" \
    -draw "polyline 24,8 17,16 24,24"
bar_icon wxART_SHOW -fill none -stroke '#303840' -strokewidth 3 -draw "polyline 8,8 15,16 8,24" \
    -draw "polyline 17,8 24,16 17,24"
bar_icon wxART_ZOOM_P -fill none -stroke '#303840' -draw "circle 14,14 14,6" -strokewidth 3 \
    -draw "line 20,20 26,26" -strokewidth 2 -draw "line 10,14 18,14" -draw "line 14,10 14,18"
bar_icon wxART_ZOOM_M -fill none -stroke '#303840' -draw "circle 14,14 14,6" -strokewidth 3 \
    -draw "line 20,20 26,26" -strokewidth 2 -draw "line 10,14 18,14"

# ---- play strip ----
PLAYFILL=(-fill '#2f6fb5' -stroke '#1d3f6b')
icon wxART_STARTPOINT "${PLAYFILL[@]}" -draw "rectangle 5,7 9,25" -draw "polygon 27,7 27,25 11,16"
icon wxART_PLAY_BACK "${PLAYFILL[@]}" -draw "polygon 25,5 25,27 7,16"
icon wxART_STEP_BACKWARD "${PLAYFILL[@]}" -draw "polygon 17,7 17,25 5,16" -draw "rectangle 20,7 25,25"
icon wxART_STEP_FORWARD "${PLAYFILL[@]}" -draw "polygon 15,7 15,25 27,16" -draw "rectangle 7,7 12,25"
icon wxART_PLAY "${PLAYFILL[@]}" -draw "polygon 7,5 7,27 25,16"
icon wxART_ENDPOINT "${PLAYFILL[@]}" -draw "polygon 5,7 5,25 21,16" -draw "rectangle 23,7 27,25"
icon wxART_REPEAT -fill none -stroke '#2f6fb5' -strokewidth 3 -draw "arc 5,6 27,26 200,520" \
    -fill '#2f6fb5' -stroke none -draw "polygon 2,12 12,12 7,20"

# ---- key types of new keys: a normal and a pressed form on the bar plate ----
tl_icon() { # name, drawing arguments...
    local name=$1
    shift
    convert "${BASE[@]}" -fill '#e8ecf0' -stroke '#8a96a3' -draw "roundrectangle 1,1 30,30 5,5" "$@" \
        -strip "PNG32:${name}_N.png"
    convert "${BASE[@]}" -fill '#5b6b7c' -stroke '#3a4654' -draw "roundrectangle 1,1 30,30 5,5" "$@" \
        -strip "PNG32:${name}_P.png"
}
KEYS=(-fill '#f2a33a' -stroke '#8c5a10' -strokewidth 1 -draw "polygon 6,20 9,23 6,26 3,23"
      -draw "polygon 26,6 29,9 26,12 23,9")
tl_icon wxART_TLICON_LINEAR -fill none -stroke '#303840' -draw "line 6,23 26,9" "${KEYS[@]}"
tl_icon wxART_TLICON_HERMITE_AUTO -fill none -stroke '#303840' -draw "bezier 6,23 14,23 18,9 26,9" "${KEYS[@]}"
tl_icon wxART_TLICON_HERMITE_EASE -fill none -stroke '#303840' -draw "bezier 6,23 20,23 12,9 26,9" \
    -stroke '#3fa34d' -draw "line 3,23 11,23" -draw "line 21,9 29,9" "${KEYS[@]}"
tl_icon wxART_TLICON_STEP -fill none -stroke '#303840' -draw "polyline 6,23 26,23 26,9" "${KEYS[@]}"
convert "${BASE[@]}" -fill '#e8ecf0' -stroke '#8a96a3' -draw "roundrectangle 1,1 30,30 5,5" \
    -fill '#2f6fb5' -stroke none -font $FONT -pointsize 18 -gravity center -annotate +0+1 "A" \
    -strip "PNG32:wxART_TLICON_AUTO.png"
convert "${BASE[@]}" -fill '#5b6b7c' -stroke '#3a4654' -draw "roundrectangle 1,1 30,30 5,5" \
    -fill white -stroke none -font $FONT -pointsize 18 -gravity center -annotate +0+1 "A" \
    -strip "PNG32:wxART_TLICON_AUTO_P.png"

# ---- 3D view: the button that opens the numeric panel, drawn over the picture ----
icon wxART_SHOW_GL -fill '#e8ecf0c0' -stroke '#3a4654' -draw "roundrectangle 1,1 30,30 5,5" \
    -fill none -stroke '#303840' -strokewidth 3 -draw "line 19,8 11,16" -draw "line 11,16 19,24"

# ---- colour-curve editor: the A channel shown or hidden, and the channel selector ----
CHECKER=(-fill '#ffffff' -stroke '#8a96a3' -draw "rectangle 2,2 29,29" -stroke none -fill '#c8ccd2'
         -draw "rectangle 2,2 8,8" -draw "rectangle 16,2 22,8" -draw "rectangle 9,9 15,15"
         -draw "rectangle 23,9 29,15" -draw "rectangle 2,16 8,22" -draw "rectangle 16,16 22,22"
         -draw "rectangle 9,23 15,29" -draw "rectangle 23,23 29,29")
icon wxART_ALPHA_ON "${CHECKER[@]}" -fill '#2f6fb5' -font $FONT -pointsize 22 -gravity center \
    -annotate +0+1 "A"
icon wxART_ALPHA_OFF "${CHECKER[@]}" -fill '#9aa3ad' -font $FONT -pointsize 22 -gravity center \
    -annotate +0+1 "A" -gravity none -fill none -stroke '#d03030' -strokewidth 3 -draw "line 4,27 27,4"
tl_icon wxART_SELECTOR -fill '#303840' -stroke white -strokewidth 1 \
    -draw "polygon 10,5 10,25 15,20 19,28 22,27 18,19 25,19"
