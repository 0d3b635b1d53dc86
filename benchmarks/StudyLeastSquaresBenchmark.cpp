#include "benchmarks/Documents.h"
#include "study/Optimise.h"

#include <benchmark/benchmark.h>

#include <array>

namespace corvanta::benchmarks {
namespace {

constexpr const char* PushrodCar = "formula-front-pushrod.WSP";

/// Pickups by the order in which studies free their coordinates.
constexpr std::array<PointNumber, 4> Pickups{ptTRI, ptUWIF, ptUWIR, ptLWIF};

std::vector<PointCoordinate> Coordinates(std::size_t count) {
    std::vector<PointCoordinate> coordinates;
    for (std::size_t n = 0; n < count; ++n) {
        coordinates.push_back({Pickups[n / 3], static_cast<int>(n % 3)});
    }
    return coordinates;
}

/// The document's own grid, of 21 wheel steps by 9 rack steps.
Design OwnGrid(LoadedProgram& program) {
    Design design = DesignOf(program->Document);
    design.Data.RackTravelStepSize = 7;
    return design;
}

/// Ten coordinates and four targets on the document's own grid, from five starts: at most 2 s with
/// two threads.
void BM_Optimise(benchmark::State& state) {
    LoadedProgram program(PushrodCar, 21);
    const Design design = OwnGrid(program);
    const SolveSettings settings{program->Units, program->Channels};
    OptimiseQuestion question;
    for (const PointCoordinate& coordinate : Coordinates(10)) {
        const double value = ValueOf(design, coordinate);
        question.Free.push_back({coordinate, value - 15, value + 15});
    }
    question.Targets = {PlainTarget(chSteerAngleBump, vvAlongWheelTravel, 0, 0.01, -25, 25),
                        PlainTarget(chCamberAngle, vvAlongWheelTravel, -1.5, 0.7, -25, 25),
                        PlainTarget(chRollCentreToGround, vvAlongWheelTravel, 30, 15, -10, 10),
                        PlainTarget(chAckerman, vvAlongRackTravel, 0.4, 0.1, 14, 28)};
    CSampleRunner runner({static_cast<unsigned>(state.range(0))});
    for (auto _ : state) {
        benchmark::DoNotOptimize(Optimise(runner, design, question, settings));
    }
}
BENCHMARK(BM_Optimise)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
} // namespace corvanta::benchmarks
