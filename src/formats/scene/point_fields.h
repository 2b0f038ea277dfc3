#pragma once

#include "model/vertex.h"

namespace ulk3d {

class field_scanner;
class text_output;

/// Four integers, each truncated to its low 8 bits; 255 becomes 1.
col3a read_byte_color(field_scanner fields);

/// Four expressions, used unchanged.
col3a read_float_color(field_scanner fields);

/// x, y, z.
pos3 read_position(field_scanner fields);

/// Writes the "position" line that `read_position` reads back.
void write_position(const pos3& position, text_output& output);

/// Radius, angle in degrees, z: see circle_point.
pos3 read_circle(field_scanner fields);

/// Radius and two angles in degrees: see sphere_point.
pos3 read_sphere(field_scanner fields);

/// Three plain numbers.
dir3 read_direction(field_scanner fields);

/// The point on a circle about the z axis, at height z and at `angle` degrees, counted from +y towards -x.
pos3 circle_point(float radius, float angle, float z);

/// The point at `angle` degrees from +z and `around` degrees about the z axis, counted from +y towards -x.
pos3 sphere_point(float radius, float angle, float around);

}  // namespace ulk3d
