#include "export/CDXF.h"

#include "export/ExportFailure.h"
#include "results/MDisplay3d.h"
#include "solver/MLibMaths.h"

#include <array>
#include <charconv>
#include <string_view>

namespace corvanta {

namespace {

constexpr std::string_view LineEnd = "\r\n";
constexpr std::string_view Layer = "Corvanta";

/// Group codes of the format. Each coordinate of a line's end has its own.
enum GroupCode : int {
    gcEntityType = 0,
    gcName = 2,
    gcLayer = 8,
    gcStartX = 10,
    gcStartY = 20,
    gcStartZ = 30,
    gcEndX = 11,
    gcEndY = 21,
    gcEndZ = 31,
};

/// The longest fixed notation of a double: the digits of the smallest one.
constexpr std::size_t LongestNumber = 400;

/// The shortest plain decimal digits that read back as the same double, with the place of the sign
/// in front and a blank behind.
std::string NumberLine(double value) {
    std::array<char, LongestNumber> buffer{};
    // A zero has no sign in text.
    const double number = Checked(value) == 0 ? 0.0 : value;
    const char* const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number,
                                          std::chars_format::fixed)
                                .ptr;
    const std::string digits(static_cast<const char*>(buffer.data()), end);
    return (number < 0 ? "" : " ") + digits + " ";
}

std::string Pair(GroupCode code, std::string_view value) {
    std::string text = NumberLine(code);
    text.append(LineEnd).append(value).append(LineEnd);
    return text;
}

std::string Pair(GroupCode code, double value) {
    return Pair(code, NumberLine(value));
}

} // namespace

void CDXF::OpenSection() {
    m_text = Pair(gcEntityType, "SECTION") + Pair(gcName, "ENTITIES");
}

void CDXF::AddCircle(const SuspPoint& /*centre*/, const SuspPoint& /*axisPoint*/, double /*radius*/,
                     Colour /*colour*/) {}

void CDXF::AddLabel(const SuspPoint& /*at*/, const std::string& /*text*/) {}

void CDXF::AddLine(const SuspPoint& from, const SuspPoint& to, Colour /*colour*/) {
    m_text += Pair(gcEntityType, "LINE") + Pair(gcLayer, Layer) + Pair(gcStartX, from.X) +
              Pair(gcStartY, from.Y) + Pair(gcStartZ, from.Z) + Pair(gcEndX, to.X) +
              Pair(gcEndY, to.Y) + Pair(gcEndZ, to.Z);
}

void CDXF::CloseSection() {
    m_text += Pair(gcEntityType, "ENDSEC") + Pair(gcEntityType, "EOF");
}

bool ExportDXF(const Suspension& document, int rackStep, int wheelStep, const std::string& path,
               FileServices& files, Messages& messages) {
    try {
        CDXF dxf;
        dxf.OpenSection();
        Draw3d(dxf, PositionAt(document, rackStep, wheelStep));
        dxf.CloseSection();
        files.WriteBytes(path, dxf.Text());
        return true;
    } catch (...) {
        ReportExportFailure(messages);
        return false;
    }
}

} // namespace corvanta
