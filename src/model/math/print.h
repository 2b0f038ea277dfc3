#pragma once

#include <iosfwd>

#include "model/math/records.h"

/// One fixed text form for each record: the record's name and its values in order, as in "pos3(1.000000,
/// 0.500000, ...)".
///
/// Floating-point values are printed as std::fixed with the stream's own precision, integers in decimal, and
/// the bytes of a colour as two lower-case hexadecimal digits each, without separators: "col3aub(ff8000ff)".
/// On a stream with `showbase` a colour of bytes has one "0x" before its name. Numbers look the same in every
/// locale. The operators leave the stream's flags and locale as they were.
namespace ulk3d {

std::ostream& operator<<(std::ostream& os, const pos3& v);
std::ostream& operator<<(std::ostream& os, const dir3& v);
std::ostream& operator<<(std::ostream& os, const pos2& v);
std::ostream& operator<<(std::ostream& os, const dir2& v);
std::ostream& operator<<(std::ostream& os, const pos2l& v);
std::ostream& operator<<(std::ostream& os, const dir2l& v);
std::ostream& operator<<(std::ostream& os, const qua& v);
std::ostream& operator<<(std::ostream& os, const rot3& v);
std::ostream& operator<<(std::ostream& os, const pst3w& v);
std::ostream& operator<<(std::ostream& os, const plr3& v);
std::ostream& operator<<(std::ostream& os, const ang3& v);
std::ostream& operator<<(std::ostream& os, const rev3& v);
std::ostream& operator<<(std::ostream& os, const srt3& v);
std::ostream& operator<<(std::ostream& os, const irt3& v);
std::ostream& operator<<(std::ostream& os, const vec3w& v);
std::ostream& operator<<(std::ostream& os, const col3& v);
std::ostream& operator<<(std::ostream& os, const col3a& v);
std::ostream& operator<<(std::ostream& os, const txc1& v);
std::ostream& operator<<(std::ostream& os, const txc2& v);
std::ostream& operator<<(std::ostream& os, const txc2q& v);
std::ostream& operator<<(std::ostream& os, const txc3& v);
std::ostream& operator<<(std::ostream& os, const txc3q& v);
/// Four rows, each on its own line after a tab.
std::ostream& operator<<(std::ostream& os, const mtx3w& v);
std::ostream& operator<<(std::ostream& os, const col3aub& v);
std::ostream& operator<<(std::ostream& os, const col3ub& v);
std::ostream& operator<<(std::ostream& os, const col1aub& v);
std::ostream& operator<<(std::ostream& os, const col1ub& v);
std::ostream& operator<<(std::ostream& os, const projection& v);
std::ostream& operator<<(std::ostream& os, const box2& v);
std::ostream& operator<<(std::ostream& os, const box3& v);
std::ostream& operator<<(std::ostream& os, const dim2& v);
std::ostream& operator<<(std::ostream& os, const dim3& v);
std::ostream& operator<<(std::ostream& os, const surface& v);
std::ostream& operator<<(std::ostream& os, const line2d& v);
std::ostream& operator<<(std::ostream& os, const line3d& v);

}  // namespace ulk3d
