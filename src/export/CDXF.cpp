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
    gcText = 1,
    gcName = 2,
    gcLineType = 6,
    gcLayer = 8,
    gcVariable = 9,
    gcColour = 62,
    gcFlags = 70,
    gcStartX = 10,
    gcStartY = 20,
    gcStartZ = 30,
    gcEndX = 11,
    gcEndY = 21,
    gcEndZ = 31,
};

/// The longest fixed notation of a double: the digits of the smallest one.
constexpr std::size_t LongestNumber = 400;

} // namespace

/// The shortest plain decimal digits that read back as the same double; in the classic form with
/// the place of the sign in front and a blank behind.
std::string CDXF::NumberLine(double value) const {
    std::array<char, LongestNumber> buffer{};
    // A zero has no sign in text.
    const double number = Checked(value) == 0 ? 0.0 : value;
    const char* const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number,
                                          std::chars_format::fixed)
                                .ptr;
    const std::string digits(static_cast<const char*>(buffer.data()), end);
    return m_form == DxfForm::R12 ? digits : (number < 0 ? "" : " ") + digits + " ";
}

std::string CDXF::Pair(int code, std::string_view value) const {
    std::string text = NumberLine(code);
    text.append(LineEnd).append(value).append(LineEnd);
    return text;
}

std::string CDXF::Pair(int code, double value) const {
    return Pair(code, NumberLine(value));
}

void CDXF::OpenSection() {
    m_text.clear();
    if (m_form == DxfForm::R12) {
        m_text = Pair(gcEntityType, "SECTION") + Pair(gcName, "HEADER") +
                 Pair(gcVariable, "$ACADVER") + Pair(gcText, "AC1009") +
                 Pair(gcEntityType, "ENDSEC") + Pair(gcEntityType, "SECTION") +
                 Pair(gcName, "TABLES") + Pair(gcEntityType, "TABLE") + Pair(gcName, "LAYER") +
                 Pair(gcFlags, "1") + Pair(gcEntityType, "LAYER") + Pair(gcName, Layer) +
                 Pair(gcFlags, "0") + Pair(gcColour, "7") + Pair(gcLineType, "CONTINUOUS") +
                 Pair(gcEntityType, "ENDTAB") + Pair(gcEntityType, "ENDSEC");
    }
    m_text += Pair(gcEntityType, "SECTION") + Pair(gcName, "ENTITIES");
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

std::string DxfText(const Suspension& document, int rackStep, int wheelStep, DxfForm form) {
    CDXF dxf(form);
    dxf.OpenSection();
    Draw3d(dxf, PositionAt(document, rackStep, wheelStep));
    dxf.CloseSection();
    return dxf.Text();
}

bool ExportDXF(const Suspension& document, int rackStep, int wheelStep, const std::string& path,
               FileServices& files, Messages& messages) {
    try {
        files.WriteBytes(path, DxfText(document, rackStep, wheelStep, DxfForm::Classic));
        return true;
    } catch (...) {
        ReportExportFailure(messages);
        return false;
    }
}

} // namespace corvanta
