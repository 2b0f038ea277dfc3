#pragma once

namespace ulk3d {

struct kernel_t;

/// The kernel for the 256-bit registers of x86; null on a machine that has none.
const kernel_t* avx2_kernel();

}  // namespace ulk3d
