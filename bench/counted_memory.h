#pragma once

/// How much memory a piece of work takes, by what goes through operator new and delete in all of the process.
/// Only one count runs at a time.

/// From here on memory is counted, from 0.
void start_counting_memory();

/// Ends the count and returns its highest value in bytes.
double peak_of_counted_memory();
