#include "formats/scene/point_fields.h"

#include <cmath>

#include "formats/scene/field_scanner.h"
#include "formats/scene/text_output.h"
#include "model/math/colours.h"

namespace ulk3d {

namespace {

/// The multiplication is done in double precision; sine and cosine are taken in single precision.
float radians(float degrees) {
    return static_cast<float>(static_cast<double>(degrees) * 0.017453292519943122);
}

float byte_channel(std::uint32_t field) {
    return byte_to_channel(static_cast<std::uint8_t>(field & 0xFFU));
}

}  // namespace

// Braced initialisers are evaluated from left to right, which is the order of the fields.

col3a read_byte_color(field_scanner fields) {
    return {byte_channel(fields.uint()), byte_channel(fields.uint()), byte_channel(fields.uint()),
            byte_channel(fields.uint())};
}

col3a read_float_color(field_scanner fields) {
    return {fields.expr(), fields.expr(), fields.expr(), fields.expr()};
}

pos3 read_position(field_scanner fields) {
    return {fields.expr(), fields.expr(), fields.expr()};
}

void write_position(const pos3& position, text_output& output) {
    output.line("position ", position.x, ',', position.y, ',', position.z);
}

pos3 read_circle(field_scanner fields) {
    const auto [radius, angle, z] = read_position(fields);
    return circle_point(radius, angle, z);
}

pos3 read_sphere(field_scanner fields) {
    const auto [radius, angle, around] = read_position(fields);
    return sphere_point(radius, angle, around);
}

dir3 read_direction(field_scanner fields) {
    return {fields.dbl(), fields.dbl(), fields.dbl()};
}

pos3 circle_point(float radius, float angle, float z) {
    const float a = radians(angle);
    return {-std::sin(a) * radius, std::cos(a) * radius, z};
}

pos3 sphere_point(float radius, float angle, float around) {
    const float a = radians(angle);
    const float b = radians(around);
    return {-radius * std::sin(a) * std::sin(b), radius * std::sin(a) * std::cos(b), radius * std::cos(a)};
}

}  // namespace ulk3d
