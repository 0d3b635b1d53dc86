#pragma once

#include "calculation/SCalcs.h"
#include "model/Channels.h"
#include "model/Design.h"
#include "model/Units.h"

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {

namespace py = pybind11;

/// The units in which the module takes and gives numbers: those that are stored, mm, N, kg and deg.
struct StoredUnits {
    StoredUnits();

    /// The channels have the titles of the design's end of the car.
    explicit StoredUnits(const Design& design);

    FundamentalUnits Units;
    ChannelCatalogue Channels;
    SolveSettings Settings{Units, Channels};

    StoredUnits(const StoredUnits&) = delete; // the settings refer to the rest
    StoredUnits& operator=(const StoredUnits&) = delete;
    StoredUnits(StoredUnits&&) = delete;
    StoredUnits& operator=(StoredUnits&&) = delete;
    ~StoredUnits() = default;
};

/// A corner in whose name something is calculated: a copy, as another thread may change the one in
/// Python's hands meanwhile.
struct AskedCorner : StoredUnits {
    explicit AskedCorner(const Design& corner) : StoredUnits(corner), Own(corner) {}

    const Design Own;
};

/// Stands in arrays where there is no value; no calculation gives one.
inline constexpr double NoNumber = std::numeric_limits<double>::quiet_NaN();

/// An array of one element for each entry of a list.
template <typename Entry, typename Get>
[[nodiscard]] auto ArrayOf(const std::vector<Entry>& entries, Get get) {
    using Value = decltype(get(entries.front()));
    py::array_t<Value> array(static_cast<py::ssize_t>(entries.size()));
    Value* place = array.mutable_data();
    for (const Entry& entry : entries) {
        *place++ = get(entry);
    }
    return array;
}

[[nodiscard]] inline py::array_t<double> ArrayOf(const std::vector<double>& values) {
    return py::array_t<double>(static_cast<py::ssize_t>(values.size()), values.data());
}

[[nodiscard]] inline py::array_t<double> ArrayOf(const std::vector<std::optional<double>>& values) {
    return ArrayOf(values, [](const auto& value) { return value.value_or(NoNumber); });
}

/// The parts of the module, each of which adds its own.
void BindDesign(py::module_& module);
void BindSolve(py::module_& module);
void BindSweeps(py::module_& module);
void BindSearches(py::module_& module);
void BindSpreads(py::module_& module);
void BindSetup(py::module_& module);

} // namespace corvanta
