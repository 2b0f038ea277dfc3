#pragma once

namespace ulk3d {

/// Conversions between degrees, the unit of every interface, and radians. The product is computed in double
/// precision.
constexpr float to_radians(float degrees) {
    return static_cast<float>(static_cast<double>(degrees) * 0.017453292519943122);
}
constexpr float to_degrees(float radians) {
    return static_cast<float>(static_cast<double>(radians) * 57.29577951308232);
}

}  // namespace ulk3d
