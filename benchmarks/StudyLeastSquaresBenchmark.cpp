#include "benchmarks/AgainstOneThread.h"
#include "benchmarks/Documents.h"
#include "study/Fit.h"
#include "study/Optimise.h"
#include "study/SampleRandom.h"

#include <benchmark/benchmark.h>

#include <array>
#include <vector>

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

/// Ten coordinates and four targets on the document's own grid, from five starts, after two pickups
/// were moved: at most 2 s with two threads, and 1.8 times as fast as with one.
void BM_Optimise(benchmark::State& state) {
    LoadedProgram program(PushrodCar, 21);
    Design design = OwnGrid(program);
    design.Points[ptTRI].Z += 6;
    design.Points[ptUWIF].Z -= 6;
    const SolveSettings settings{program->Units, program->Channels};
    OptimiseQuestion question;
    for (const PointCoordinate& coordinate : Coordinates(10)) {
        const double value = ValueOf(design, coordinate);
        question.Free.push_back({coordinate, value - 15, value + 15});
    }
    question.Targets = {PlainTarget(chSteerAngleBump, vvAlongWheelTravel, 0, 0.01, -25, 25),
                        PlainTarget(chCamberAngle, vvAlongWheelTravel, -3.2, 0.6, -25, 25),
                        PlainTarget(chRollCentreToGround, vvAlongWheelTravel, 45, 15, -10, 10),
                        PlainTarget(chAckerman, vvAlongRackTravel, -0.03, 0.01, 14, 28)};
    TimeAgainstOneThread(state, [&](CSampleRunner& runner) {
        benchmark::DoNotOptimize(Optimise(runner, design, question, settings));
    });
}
BENCHMARK(BM_Optimise)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseRealTime();

/// Twelve coordinates to sixty noisy readings, on three rack travels: at most 1 s with two threads,
/// and 1.8 times as fast as with one.
void BM_Fit(benchmark::State& state) {
    LoadedProgram program(PushrodCar, 21);
    const Design design = OwnGrid(program);
    const SolveSettings settings{program->Units, program->Channels};
    CSampleRandom random(1, 0);
    FitQuestion question;
    Design built = design;
    for (const PointCoordinate& coordinate : Coordinates(12)) {
        question.Free.push_back({coordinate, 3});
        SetValue(built, coordinate, ValueOf(built, coordinate) + random.Normal());
    }
    Suspension car;
    Solve(car, built, settings);
    for (const double rack : {-14.0, 0.0, 14.0}) {
        for (const double wheel : {-25.0, -12.5, 0.0, 12.5, 25.0}) {
            const WheelState& at =
                car.WheelStates(NearestRackStep(car, rack), NearestWheelStep(car, wheel));
            for (const int channel : {chCamberAngle, chSteerAngle, chCasterAngle, chHalfTrack}) {
                const double uncertainty = channel == chHalfTrack ? 0.2 : 0.02;
                question.Readings.push_back({wheel, rack, channel,
                                             at.Channels[channel] + uncertainty * random.Normal(),
                                             uncertainty});
            }
        }
    }
    TimeAgainstOneThread(state, [&](CSampleRunner& runner) {
        benchmark::DoNotOptimize(Fit(runner, design, question, settings));
    });
}
BENCHMARK(BM_Fit)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
} // namespace corvanta::benchmarks
