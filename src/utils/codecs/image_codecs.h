#pragma once

/// The four forms of pictures in files.
#include "utils/codecs/bmp_file.h"
#include "utils/codecs/jpeg_file.h"
#include "utils/codecs/png_image.h"
#include "utils/codecs/tga_file.h"
