#include "model/math/print.h"

#include <ostream>
#include <string_view>

#include "model/math/number_format.h"

namespace ulk3d {
namespace {

template <class First, class... Rest>
std::ostream& print_form(std::ostream& os, std::string_view name, const First& first, const Rest&... rest) {
    const number_format format(os);
    os << name << '(' << first;
    ((os << ", " << rest), ...);
    return os << ')';
}

template <class... Bytes>
std::ostream& print_bytes(std::ostream& os, std::string_view name, Bytes... bytes) {
    constexpr std::string_view digits = "0123456789abcdef";
    if (os.flags() & std::ios_base::showbase)
        os << "0x";
    os << name << '(';
    ((os << digits[bytes >> 4] << digits[bytes & 15]), ...);
    return os << ')';
}

}  // namespace

std::ostream& operator<<(std::ostream& os, const pos3& v) {
    return print_form(os, "pos3", v.x, v.y, v.z);
}
std::ostream& operator<<(std::ostream& os, const dir3& v) {
    return print_form(os, "dir3", v.x, v.y, v.z);
}
std::ostream& operator<<(std::ostream& os, const pos2& v) {
    return print_form(os, "pos2", v.x, v.y);
}
std::ostream& operator<<(std::ostream& os, const dir2& v) {
    return print_form(os, "dir2", v.x, v.y);
}
std::ostream& operator<<(std::ostream& os, const pos2l& v) {
    return print_form(os, "pos2l", v.x, v.y);
}
std::ostream& operator<<(std::ostream& os, const dir2l& v) {
    return print_form(os, "dir2l", v.x, v.y);
}
std::ostream& operator<<(std::ostream& os, const qua& v) {
    return print_form(os, "qua", v.w, v.x, v.y, v.z);
}
std::ostream& operator<<(std::ostream& os, const rot3& v) {
    return print_form(os, "rot3", v.angle, v.axis);
}
std::ostream& operator<<(std::ostream& os, const pst3w& v) {
    return print_form(os, "pst3w", v.a, v.b, v.p);
}
std::ostream& operator<<(std::ostream& os, const plr3& v) {
    return print_form(os, "plr3", v.a, v.b, v.c);
}
std::ostream& operator<<(std::ostream& os, const ang3& v) {
    return print_form(os, "ang3", v.a, v.b, v.c);
}
std::ostream& operator<<(std::ostream& os, const rev3& v) {
    return print_form(os, "rev3", v.x, v.y, v.z);
}
std::ostream& operator<<(std::ostream& os, const srt3& v) {
    return print_form(os, "srt3", v.s, v.d);
}
std::ostream& operator<<(std::ostream& os, const irt3& v) {
    return print_form(os, "irt3", v.a, v.b);
}
std::ostream& operator<<(std::ostream& os, const vec3w& v) {
    return print_form(os, "vec3w", v.x, v.y, v.z, v.w);
}
std::ostream& operator<<(std::ostream& os, const col3& v) {
    return print_form(os, "col3", v.r, v.g, v.b);
}
std::ostream& operator<<(std::ostream& os, const col3a& v) {
    return print_form(os, "col3a", v.r, v.g, v.b, v.a);
}
std::ostream& operator<<(std::ostream& os, const txc1& v) {
    return print_form(os, "txc1", v.s);
}
std::ostream& operator<<(std::ostream& os, const txc2& v) {
    return print_form(os, "txc2", v.s, v.t);
}
std::ostream& operator<<(std::ostream& os, const txc2q& v) {
    return print_form(os, "txc2q", v.s, v.t, v.q);
}
std::ostream& operator<<(std::ostream& os, const txc3& v) {
    return print_form(os, "txc3", v.s, v.t, v.r);
}
std::ostream& operator<<(std::ostream& os, const txc3q& v) {
    return print_form(os, "txc3q", v.s, v.t, v.r, v.q);
}

std::ostream& operator<<(std::ostream& os, const mtx3w& v) {
    const number_format format(os);
    os << "mtx3w(\t" << v[0];
    for (std::size_t i = 1; i < v.m.size(); ++i)
        os << (i % 4 == 0 ? ",\n\t" : ", ") << v[i];
    return os << ')';
}

std::ostream& operator<<(std::ostream& os, const col3aub& v) {
    return print_bytes(os, "col3aub", v.r, v.g, v.b, v.a);
}
std::ostream& operator<<(std::ostream& os, const col3ub& v) {
    return print_bytes(os, "col3ub", v.r, v.g, v.b);
}
std::ostream& operator<<(std::ostream& os, const col1aub& v) {
    return print_bytes(os, "col1aub", v.grey, v.alpha);
}
std::ostream& operator<<(std::ostream& os, const col1ub& v) {
    return print_bytes(os, "col1ub", v.grey);
}

std::ostream& operator<<(std::ostream& os, const projection& v) {
    return print_form(os, "projection", v.left, v.right, v.bottom, v.top, v.near, v.far);
}
std::ostream& operator<<(std::ostream& os, const box2& v) {
    return print_form(os, "box2", v.low, v.high);
}
std::ostream& operator<<(std::ostream& os, const box3& v) {
    return print_form(os, "box3", v.low, v.high);
}
std::ostream& operator<<(std::ostream& os, const dim2& v) {
    return print_form(os, "dim2", v.width, v.height);
}
std::ostream& operator<<(std::ostream& os, const dim3& v) {
    return print_form(os, "dim3", v.width, v.height, v.depth);
}
std::ostream& operator<<(std::ostream& os, const surface& v) {
    return print_form(os, "surface", v.a, v.b, v.c, v.d);
}
std::ostream& operator<<(std::ostream& os, const line2d& v) {
    return print_form(os, "line2d", v.a, v.b, v.c);
}
std::ostream& operator<<(std::ostream& os, const line3d& v) {
    return print_form(os, "line3d", v.d, v.to_local, v.from_local);
}

}  // namespace ulk3d
