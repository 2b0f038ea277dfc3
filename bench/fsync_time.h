#pragma once

/// Seconds that this process has waited in fsync for its files to reach the disk. Programs are linked with
/// `--wrap=fsync`, which leads the calls of their own objects to the clock.
double seconds_in_fsync();
