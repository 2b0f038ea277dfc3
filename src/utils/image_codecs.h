#pragma once

/// The four forms of pictures in files.
#include "utils/bmp_file.h"
#include "utils/jpeg_file.h"
#include "utils/png_image.h"
#include "utils/tga_file.h"
