#include "python/Module.h"

#include "automation/DesignCheck.h"
#include "model/Failure.h"
#include "persistence/DesignFile.h"
#include "platform/DiskFileServices.h"
#include "study/DesignFields.h"
#include "study/DesignVariable.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string_view>
#include <utility>

namespace corvanta {

namespace {

static_assert(sizeof(SuspPoint) == 3 * sizeof(double) &&
                  sizeof(PointSet) == PointCount * sizeof(SuspPoint),
              "arrays look at points as at rows of three numbers");

py::tuple Load(const std::string& path) {
    const StoredUnits stored;
    DiskFileServices files;
    std::string words;
    try {
        const Design design = ReadDesign(path, stored.Units, files, words);
        return py::make_tuple(design, words);
    } catch (const Failure& failure) {
        throw Failure(failure.Number(), path + ": " + failure.Description());
    }
}

void Save(const Design& design, const std::string& path) {
    const StoredUnits stored;
    DiskFileServices files;
    const std::string text = DesignText(design, stored.Units, files);
    if (DescriptionIn(text, stored.Units, files) != design.Data.Description) {
        throw Failure(fnInvalidCall,
                      path + ": not saved, as a document would not keep the description. Take out "
                             "\"[\", tabs and line ends around it, and characters that are not in "
                             "code page 1252");
    }
    files.WriteText(path, text);
}

[[noreturn]] void RaiseUnknown(const std::string& name) {
    throw py::key_error("a corner has no value or point in play \"" + name + "\"");
}

const DesignField* FindField(std::string_view name) {
    const auto fields = DesignFields();
    const auto found = std::ranges::find(fields, name, &DesignField::Key);
    return found == fields.end() ? nullptr : &*found;
}

/// The coordinate of a point in play; raises KeyError for any other name.
DesignVariable CoordinateOf(const Design& design, const std::string& name) {
    const std::optional<DesignVariable> variable = VariableOf(name);
    if (!variable || !HasVariable(design.Data, *variable)) {
        RaiseUnknown(name);
    }
    return *variable;
}

py::object Get(const Design& design, const std::string& name) {
    if (const DesignField* const field = FindField(name)) {
        return std::visit([&](const auto& place) { return py::cast(design.Data.*place.Member); },
                          field->Place);
    }
    return py::cast(ValueOf(design, CoordinateOf(design, name)));
}

double FiniteNumber(const py::object& value, const std::string& name) {
    const auto number = value.cast<double>();
    if (!std::isfinite(number)) {
        throw Failure(fnInvalidCall, name + " must be a finite number");
    }
    return number;
}

/// Puts what Python gives into a field.
struct FieldSetter {
    SuspensionData& Data;
    const std::string& Name;
    const py::object& Value;

    void operator()(const MechanismPlace& place) const {
        const auto number = Value.cast<std::int32_t>();
        if (number < 0 || number > place.Highest) {
            throw Failure(fnInvalidCall, Name + " must be 0 to " + std::to_string(place.Highest));
        }
        Data.*place.Member = number;
    }
    void operator()(const NumberPlace& place) const {
        Data.*place.Member = FiniteNumber(Value, Name);
    }
    void operator()(const FlagPlace& place) const { Data.*place.Member = Value.cast<bool>(); }
    void operator()(const TextPlace& place) const {
        Data.*place.Member = Value.cast<std::string>();
    }
};

void Set(Design& design, const std::string& name, const py::object& value) {
    try {
        if (const DesignField* const field = FindField(name)) {
            std::visit(FieldSetter{design.Data, name, value}, field->Place);
        } else {
            SetValue(design, CoordinateOf(design, name), FiniteNumber(value, name));
        }
    } catch (const py::cast_error&) {
        throw py::type_error(name + " can't take " + py::repr(value).cast<std::string>());
    }
}

py::list FieldNames() {
    py::list names;
    for (const DesignField& field : DesignFields()) {
        names.append(field.Key);
    }
    return names;
}

/// What a mechanism's number means; nothing for a value of another kind.
std::optional<std::string> Words(const Design& design, const std::string& name) {
    const DesignField* const field = FindField(name);
    const auto* const place = field ? std::get_if<MechanismPlace>(&field->Place) : nullptr;
    return place ? std::optional(std::string(place->Words(design.Data.*place->Member)))
                 : std::nullopt;
}

/// Short names and long ones.
py::dict PointsInPlay(const Design& design) {
    const PointCatalogue catalogue = CatalogueOf(design.Data);
    py::dict names;
    for (const PointNumber number : AllPoints) {
        if (catalogue[number].Enabled) {
            names[py::str(PointShortName(number))] = catalogue[number].LongName;
        }
    }
    return names;
}

/// The point itself as an array: writing there moves it. `owner` is the Python object of a design.
py::array_t<double> PointView(const py::object& owner, const std::string& name) {
    auto& design = owner.cast<Design&>();
    const std::optional<DesignVariable> x = VariableOf(name + ".X");
    if (!x || !HasVariable(design.Data, *x)) {
        RaiseUnknown(name);
    }
    return py::array_t<double>(3, &design.Points[std::get<PointCoordinate>(*x).Point].X, owner);
}

py::list Check(const Design& design) {
    const StoredUnits stored(design);
    py::list findings;
    for (const Finding& finding : CheckDesign(design, stored.Units)) {
        py::list points;
        for (const PointNumber number : finding.Points) {
            points.append(PointShortName(number));
        }
        findings.append(py::make_tuple(finding.IsError, finding.Text, py::tuple(points)));
    }
    return findings;
}

/// All values and all 49 points, in play or not.
py::tuple StateOf(const Design& design) {
    py::dict values;
    for (const DesignField& field : DesignFields()) {
        values[py::str(field.Key)] = Get(design, std::string(field.Key));
    }
    return py::make_tuple(
        values, py::bytes(reinterpret_cast<const char*>(&design.Points), sizeof design.Points));
}

Design DesignOfState(const py::tuple& state) {
    Design design;
    for (const auto& [name, value] : state[0].cast<py::dict>()) {
        Set(design, name.cast<std::string>(), py::reinterpret_borrow<py::object>(value));
    }
    const auto points = state[1].cast<std::string>();
    if (points.size() != sizeof design.Points) {
        throw Failure(fnInvalidCall, "This is no pickled corner");
    }
    std::memcpy(&design.Points, points.data(), sizeof design.Points);
    return design;
}

} // namespace

void BindDesign(py::module_& module) {
    py::class_<Design>(module, "Design")
        .def(py::init<const Design&>())
        .def("save", &Save)
        .def("get", &Get)
        .def("set", &Set)
        .def("words", &Words)
        .def("points_in_play", &PointsInPlay)
        .def("check", &Check)
        .def("__eq__", [](const Design& one, const Design& other) { return one == other; })
        .def(py::pickle(&StateOf, &DesignOfState));
    module.def("load", &Load);
    module.def("field_names", &FieldNames);
    module.def("point_view", &PointView);
}

} // namespace corvanta
