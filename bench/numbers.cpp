#include "utils/text/numbers.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "unit/utils/text/evalnumber_reference.h"
#include "utils/text/evalnumber.h"

// Reading and writing the numbers of a scene file, each compared with the plain way.

namespace {

std::vector<float> coordinates() {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> distribution(-100, 100);
    std::vector<float> values(100000);
    for (float& value : values)
        value = distribution(random);
    return values;
}

std::string line_of_coordinates() {
    std::string line;
    for (const float value : coordinates()) {
        libutils::append_number(line, value);
        line += ',';
    }
    return line;
}

/// Reads all fields of a line with `read(text, &end)`.
template <class Read>
void read_line(benchmark::State& state, Read read) {
    const std::string line = line_of_coordinates();
    for (auto _ : state) {
        const char* field = line.c_str();
        while (*field != '\0') {
            const char* end = nullptr;
            benchmark::DoNotOptimize(read(field, &end));
            field = end + 1;
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(line.size()) * state.iterations());
}

/// Writes all numbers with `write(out, value)`.
template <class Write>
void write_line(benchmark::State& state, Write write) {
    const std::vector<float> values = coordinates();
    std::string out;
    for (auto _ : state) {
        out.clear();
        for (const float value : values)
            write(out, value);
        benchmark::DoNotOptimize(out.data());
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(values.size()) * state.iterations());
}

void read_with_parse_double(benchmark::State& state) {
    read_line(state, libutils::parse_double);
}

void read_with_strtod(benchmark::State& state) {
    read_line(state, [](const char* text, const char** end) {
        char* stop = nullptr;
        const double value = std::strtod(text, &stop);
        *end = stop;
        return value;
    });
}

void read_with_evalnumber(benchmark::State& state) {
    read_line(state, libutils::evalnumber);
}

void read_with_plain_evaluator(benchmark::State& state) {
    evalnumber_reference::evaluator plain;
    read_line(state, [&](const char* text, const char** end) { return plain.evalnumber(text, end); });
}

void write_with_append_number(benchmark::State& state) {
    write_line(state, [](std::string& out, float value) { libutils::append_number(out, value); });
}

void write_with_snprintf(benchmark::State& state) {
    write_line(state, [](std::string& out, float value) {
        char buffer[32];
        const int length = std::snprintf(buffer, sizeof buffer, "%g", static_cast<double>(value));
        out.append(buffer, static_cast<std::size_t>(length));
    });
}

}  // namespace

BENCHMARK(read_with_parse_double)->Unit(benchmark::kMillisecond);
BENCHMARK(read_with_strtod)->Unit(benchmark::kMillisecond);
BENCHMARK(read_with_evalnumber)->Unit(benchmark::kMillisecond);
BENCHMARK(read_with_plain_evaluator)->Unit(benchmark::kMillisecond);
BENCHMARK(write_with_append_number)->Unit(benchmark::kMillisecond);
BENCHMARK(write_with_snprintf)->Unit(benchmark::kMillisecond);
