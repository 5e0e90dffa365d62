#!/usr/bin/env bash
# Makes the drawings and the reference frames that the tests of rostrum/render compare with. The
# frames are made by ImageMagick 6, so that the renderer is held against another program's
# arithmetic. Run it again only when a case is added; the tests themselves read the PNGs alone.
#
# Compositions are 96 by 72 pixels on #304050, drawings 40 by 30. A place is written as ImageMagick's
# SRT: anchor, scale, angle (clockwise), position; pixel (0, 0) has its corner at the origin in both
# programs.
set -euo pipefail
cd "$(dirname "$0")"

readonly background='#304050'
save() { convert "${@:1:$#-1}" -depth 8 -strip -define png:exclude-chunks=date,time "${@: -1}"; }
canvas=(-size 96x72 "xc:$background")
# A drawing on the composition's own canvas; SRT arguments follow. The viewport must be larger than
# the drawing, or the distortion would cut it.
placed() { # drawing srt out
  save "$1" -virtual-pixel transparent -background none -filter point -interpolate bilinear \
    -define distort:viewport=96x72+0+0 -distort SRT "$2" PNG32:"$3"
}
over() { # layer out
  save "${canvas[@]}" "$1" -composite PNG24:"$2"
}

# Drawings. `cel` has soft edges, holes and no symmetry.
save -size 40x30 xc:none -fill '#c83232' -draw 'roundrectangle 3,3 26,24 5,5' \
  -fill '#32b45a' -draw 'circle 28,14 28,6' -fill '#f0dc46' -draw 'rectangle 6,6 12,10' \
  -fill none -stroke '#141414' -strokewidth 1.5 -draw 'line 2,28 38,20' PNG32:cel.png
save -size 40x30 gradient:'#ff8040-#2040c0' -fill '#ffffff' -draw 'rectangle 4,5 9,20' PNG24:paint.png
# A series; image 0 is blank, number 4 is missing, so that the images are 0 1 2 3 5 6.
save -size 40x30 xc:none PNG32:step0000.png
i=0
for color in '#e02020' '#20c040' '#2060e0' '' '#e0c020' '#c040c0'; do
  i=$((i + 1))
  [ -n "$color" ] || continue
  save -size 40x30 xc:none -fill "$color" -draw "rectangle $((2 * i)),4 $((2 * i + 12)),25" \
    PNG32:"step000$i.png"
done
# A series without alpha: its image 0 is black and stands for nothing.
save -size 16x12 xc:black PNG24:solid0000.png
save -size 16x12 xc:'#a05010' PNG24:solid0001.png

tmp=$(mktemp -d)
trap 'rm -r "$tmp"' EXIT

# Placement.
save "${canvas[@]}" cel.png -geometry +7+11 -composite PNG24:ref-moved.png
placed cel.png '20,15 1,1 0 48.5,36.25' "$tmp/l.png"; over "$tmp/l.png" ref-moved-part.png
placed cel.png '20,15 1,1 90 48,36' "$tmp/l.png"; over "$tmp/l.png" ref-rotated-90.png
placed cel.png '8,6 1,1 30 40,22' "$tmp/l.png"; over "$tmp/l.png" ref-rotated-30.png
placed cel.png '20,15 1.5,1.5 0 48,36' "$tmp/l.png"; over "$tmp/l.png" ref-scaled-150.png
placed cel.png '20,15 2,0.75 0 48,36' "$tmp/l.png"; over "$tmp/l.png" ref-scaled-200-75.png
placed cel.png '20,15 -1,1 0 48,36' "$tmp/l.png"; over "$tmp/l.png" ref-flipped.png
placed cel.png '0,30 1.25,0.8 -20 30,50' "$tmp/l.png"; over "$tmp/l.png" ref-all.png
# A quarter of the size: every four by four pixels averaged.
save cel.png -virtual-pixel transparent -background none -crop 40x28+0+0 +repage \
  -filter box -resize 10x7! PNG32:"$tmp/l.png"
save "${canvas[@]}" "$tmp/l.png" -geometry +20+10 -composite PNG24:ref-quarter.png
save cel.png -crop 40x28+0+0 +repage PNG32:cel-28.png

# Opacity.
save cel.png -channel A -evaluate multiply 0.4 +channel PNG32:"$tmp/l.png"
save "${canvas[@]}" "$tmp/l.png" -geometry +7+11 -composite PNG24:ref-opacity-40.png

# Order: the drawing above the painting, the painting moved.
save "${canvas[@]}" paint.png -geometry +30+20 -composite cel.png -geometry +20+12 -composite \
  PNG24:ref-order.png

# Blur of standard deviations 1.5, 4 and 10, which are radii of 3, 8 and 20. Colour times opacity and
# opacity are blurred apart, so that what is transparent lends no colour.
save -size 96x72 xc:none cel.png -geometry +28+21 -composite PNG32:"$tmp/cel.png"
for sigma in 1.5 4 10; do
  convert "$tmp/cel.png" -background black -alpha remove -alpha off -blur 0x$sigma "$tmp/color.miff"
  convert "$tmp/cel.png" -alpha extract -blur 0x$sigma -negate "$tmp/holes.miff"
  convert "${canvas[@]}" "$tmp/holes.miff" -compose multiply -composite "$tmp/seen.miff"
  save "$tmp/seen.miff" "$tmp/color.miff" -compose plus -composite PNG24:"ref-blur-$sigma.png"
done

# Hue, lightness, saturation, one at a time: -modulate takes lightness, saturation, hue in percent.
modulated() { # arguments of -modulate, out
  save cel.png -set option:modulate:colorspace HSL -modulate "$1" PNG32:"$tmp/l.png"
  save "${canvas[@]}" "$tmp/l.png" -geometry +7+11 -composite PNG24:"$2"
}
modulated 100,100,150 ref-hue-90.png
modulated 100,100,75 ref-hue-minus-45.png
modulated 60,100,100 ref-lightness-minus-40.png
modulated 100,30,100 ref-saturation-minus-70.png
modulated 100,120,100 ref-saturation-20.png
# Towards white, which -modulate cannot do: the lightness alone, the third channel of HSL.
save cel.png -colorspace HSL -channel B -evaluate multiply 0.7 -evaluate add 30% +channel \
  -colorspace sRGB PNG32:"$tmp/l.png"
save "${canvas[@]}" "$tmp/l.png" -geometry +7+11 -composite PNG24:ref-lightness-30.png
save cel.png -channel RGB -fill '#1a80ff' -colorize 100 +channel PNG32:"$tmp/l.png"
save "${canvas[@]}" "$tmp/l.png" -geometry +7+11 -composite PNG24:ref-fill.png

# The series, image by image; a frame of image n is ref-step-n.png.
n=0
for file in step0000 step0001 step0002 step0003 step0005 step0006; do
  save "${canvas[@]}" $file.png -geometry +28+21 -composite PNG24:ref-step-$n.png
  n=$((n + 1))
done
save "${canvas[@]}" PNG24:ref-empty.png

# A parent: the drawing stands at 22,10 of a 60 by 50 parent, turned by 90 and scaled by 150 %.
# First into the parent's pixels, then the parent's own place.
save -size 60x50 xc:none \( cel.png -virtual-pixel transparent -background none -filter point \
  -interpolate bilinear -define distort:viewport=60x50+0+0 -distort SRT '20,15 1,1 90 30,25' \) \
  -composite PNG32:"$tmp/p.png"
placed "$tmp/p.png" '30,25 1,1 0 48,36' "$tmp/l.png"; over "$tmp/l.png" ref-parent-plain.png
placed "$tmp/p.png" '30,25 1.2,1.2 25 50,34' "$tmp/l.png"; over "$tmp/l.png" ref-parent.png

# A composition of 60 by 50 with the drawing and the painting inside, placed turned.
save -size 60x50 xc:none paint.png -geometry +18+16 -composite cel.png -geometry -5+3 -composite \
  PNG32:"$tmp/n.png"
placed "$tmp/n.png" '30,25 1,1 -15 46,37' "$tmp/l.png"; over "$tmp/l.png" ref-nested.png
save "$tmp/n.png" -channel A -evaluate multiply 0.5 +channel PNG32:"$tmp/l.png"
save "${canvas[@]}" "$tmp/l.png" -geometry +18+11 -composite PNG24:ref-nested-50.png
