// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/benchmarks.h"
#include "calc/share_rule.h"

#include <array>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <random>
#include <vector>

namespace zelto::bench {

namespace {

struct Quotient
{
    double part;
    double total;
};

/// Sizes of units of 20 to 200 square metres in buildings of 3 to 300 of them.
std::vector<Quotient> quotients()
{
    std::mt19937 random(2009); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same values every time
    std::uniform_real_distribution<double> part(20, 200);
    std::uniform_real_distribution<double> total(500, 30'000);
    std::vector<Quotient> values(4096);
    for (Quotient& value : values)
        value = {part(random), total(random)};
    return values;
}

void ours(benchmark::State& state)
{
    const std::vector<Quotient> values = quotients();
    for ([[maybe_unused]] const auto turn : state)
        for (const Quotient& value : values)
            benchmark::DoNotOptimize(calc::QuotaMillesimale(value.part, value.total));
}

void baseline(benchmark::State& state)
{
    const std::vector<Quotient> values = quotients();
    std::array<char, 64> text{};
    for ([[maybe_unused]] const auto turn : state)
        for (const Quotient& value : values) {
            std::snprintf(text.data(), text.size(), "%.3f", value.part / value.total * 1000);
            benchmark::DoNotOptimize(text);
        }
}

} // namespace

void registerShares()
{
    benchmark::RegisterBenchmark("quota/zelto", ours);
    benchmark::RegisterBenchmark("quota/base", baseline);
}

} // namespace zelto::bench
