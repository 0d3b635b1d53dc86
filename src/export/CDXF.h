#pragma once

#include "model/Suspension.h"
#include "platform/FileServices.h"
#include "platform/Messages.h"
#include "results/DrawingSink.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace corvanta {

/// How a DXF file is written.
enum class DxfForm : std::uint8_t {
    Classic, ///< as it always was: no header, a blank behind every number
    R12,     ///< with the header and layer of AC1009, which every CAD program reads
};

/// Writes the lines of a drawing into a DXF file (Autodesk, DXF Reference, the ENTITIES section)
/// that holds nothing but LINE entities on one layer. Circles, labels and colours are not written.
class CDXF final : public DrawingSink {
  public:
    explicit CDXF(DxfForm form = DxfForm::Classic) : m_form(form) {}

    void OpenSection();
    void AddCircle(const SuspPoint& centre, const SuspPoint& axisPoint, double radius,
                   Colour colour) override;
    void AddLabel(const SuspPoint& at, const std::string& text) override;
    /// Throws Failure "Overflow" for a coordinate that is no number.
    void AddLine(const SuspPoint& from, const SuspPoint& to, Colour colour) override;
    void CloseSection();

    /// The file as it stands.
    [[nodiscard]] const std::string& Text() const { return m_text; }

  private:
    [[nodiscard]] std::string NumberLine(double value) const;
    [[nodiscard]] std::string Pair(int code, std::string_view value) const;
    [[nodiscard]] std::string Pair(int code, double value) const;

    DxfForm m_form;
    std::string m_text;
};

/// The corner at a rack and wheel step of the solved grid, 0 for the static one, as a DXF file.
/// Throws Failure "Overflow" for a coordinate that is no number.
[[nodiscard]] std::string DxfText(const Suspension& document, int rackStep, int wheelStep,
                                  DxfForm form);

/// The DXF export: the same in the classic form into a file. A failure is reported, and the file
/// then stays as it was. True if it holds the drawing.
bool ExportDXF(const Suspension& document, int rackStep, int wheelStep, const std::string& path,
               FileServices& files, Messages& messages);

} // namespace corvanta
