#!/bin/bash
# Makes the pictures of this folder anew, with ImageMagick 6 and Python. What their pixels are stands in pixels_of()
# below, and what is to be read from each file in tests/unit/utils/codecs/other_programs_test.cpp.
set -euo pipefail
cd "$(dirname "$0")"

# Prints the pixels of a picture of $2 by $3 from the top row down: as rgb, rgba or gray.
pixels_of() {
    python3 - "$@" <<'END'
import sys
kind, width, height = sys.argv[1], int(sys.argv[2]), int(sys.argv[3])
for y in range(height):
    for x in range(width):
        colour = [30 * x + 10, 30 * y + 5, 250 - 20 * x - 11 * y]
        pixel = {"rgb": colour, "rgba": colour + [255 - 20 * x - 3 * y], "gray": [25 * x + 7 * y + 1]}[kind]
        sys.stdout.buffer.write(bytes(pixel))
END
}

# KIND WIDTH HEIGHT, and what convert shall make of it. Without dates, a picture is the same each time.
picture() {
    pixels_of "$1" "$2" "$3" | convert -size "$2x$3" -depth 8 "$1:-" -define png:exclude-chunks=date,time "${@:4}"
}

picture rgb 5 3 -type TrueColor BMP3:colours24.bmp
picture rgb 8 8 -type Palette -compress None BMP3:palette8.bmp
picture rgb 3 3 -type Palette BMP3:palette4.bmp
picture rgb 2 1 -type Palette BMP3:palette1.bmp
picture rgb 5 3 -type Palette -compress RLE BMP3:packed8.bmp
picture rgba 5 3 BMP:fields32.bmp

# The header says that the bottom row comes first, and ImageMagick writes the first row of the picture first.
picture rgb 4 3 -flip -type TrueColor TGA:colours24.tga
picture rgba 5 3 -flip TGA:colours32.tga
picture rgb 5 3 -type TrueColor TGA:width5.tga
picture gray 4 3 TGA:grey8.tga
picture rgb 4 3 -compress RLE TGA:packed24.tga
picture rgb 4 3 -orient TopLeft TGA:top_left24.tga

picture rgb 5 3 PNG24:colours24.png
picture rgb 5 3 -interlace PNG PNG24:interlaced24.png
picture rgba 5 3 PNG32:colours32.png
picture rgb 5 3 PNG48:colours48.png
picture rgb 5 3 PNG8:palette15.png
picture rgb 8 8 PNG8:palette64.png
picture gray 5 3 -define png:color-type=0 -define png:bit-depth=8 PNG:grey8.png

picture rgb 5 3 -quality 100 -sampling-factor 1x1 JPEG:colours.jpg
picture rgb 5 3 -quality 100 -sampling-factor 1x1 -interlace JPEG -set comment "made elsewhere" JPEG:progressive.jpg
picture gray 5 3 -quality 100 JPEG:grey.jpg
picture rgb 5 3 -quality 100 -colorspace CMYK JPEG:cmyk.jpg
