// What the console costs against the 20 ms tick, through Google Benchmark: one log line
// (the whole 256-line log scrolls by one), one formatted line, one command, and the whole
// configuration file written and run back. The "tick_share" column is the CPU time of
// one operation divided by one tick, measured side by side in this run; Google Benchmark
// prints it with an SI prefix and an "s" (25.3us there is 25.3 millionths of a tick).
//
//   build/bench/bench_console [Google Benchmark flags]
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "app/config_file.h"
#include "app/console.h"

static const double kTickSeconds = 0.020;

// time per iteration / kTickSeconds
static void ReportTickShare(benchmark::State& state) {
    state.counters["tick_share"] = benchmark::Counter(
        kTickSeconds, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

static void BM_AddLine(benchmark::State& state) {
    for (auto _ : state) {
        g_console.AddLine("Texture set cached (12ms)");
    }
    ReportTickShare(state);
}
BENCHMARK(BM_AddLine);

static void BM_PrintTwoPieces(benchmark::State& state) {
    std::string long_text(120, 'x');
    for (auto _ : state) {
        g_console.Print("Listing extensions: %s", long_text.c_str());
    }
    ReportTickShare(state);
}
BENCHMARK(BM_PrintTwoPieces);

static void BM_ExecuteCommand(benchmark::State& state) {
    for (auto _ : state) {
        ExecuteCommand("CAMERA_POS 1.5,2.5,3.5");
    }
    ReportTickShare(state);
}
BENCHMARK(BM_ExecuteCommand);

static void BM_UnknownCommand(benchmark::State& state) {
    for (auto _ : state) {
        ExecuteCommand("NO_SUCH_COMMAND 1");
    }
    ReportTickShare(state);
}
BENCHMARK(BM_UnknownCommand);

static void BM_ConfigWriteAndRun(benchmark::State& state) {
    std::filesystem::path dir = std::filesystem::temp_directory_path() / "vantle_bench_console";
    std::filesystem::create_directories(dir);
    std::string path = (dir / "config.vbt").string();
    for (auto _ : state) {
        if (!WriteConfig(path.c_str())) {
            state.SkipWithError("config.vbt could not be written");
            break;
        }
        RunScript(path.c_str(), 0);
    }
    ReportTickShare(state);
    std::filesystem::remove_all(dir);
}
BENCHMARK(BM_ConfigWriteAndRun);

BENCHMARK_MAIN();
