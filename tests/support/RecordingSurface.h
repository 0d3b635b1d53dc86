#pragma once

#include "platform/DrawingSurface.h"

#include <ostream>
#include <string>
#include <vector>

namespace corvanta {

inline void PrintTo(const Colour& colour, std::ostream* stream) {
    *stream << int{colour.Red} << "," << int{colour.Green} << "," << int{colour.Blue};
}

} // namespace corvanta

namespace corvanta::test {

/// A surface that records what is painted, in its own units down from the top left corner. Every
/// letter is `LetterWidth` wide.
class RecordingSurface final : public DrawingSurface {
  public:
    static constexpr double LetterWidth = 8;

    struct Line {
        double X1;
        double Y1;
        double X2;
        double Y2;
        Colour Drawn;

        friend bool operator==(const Line&, const Line&) = default;
    };
    struct Circle {
        double X;
        double Y;
        double Radius;
        Colour Drawn;
    };
    struct Text {
        double X;
        double Y;
        std::string Words;
        Colour Drawn;

        friend bool operator==(const Text&, const Text&) = default;
    };

    RecordingSurface(double width, double height) : DrawingSurface(width, height) {}

    std::vector<Line> Lines;
    std::vector<Circle> Circles;
    std::vector<Text> Texts;

  private:
    void Erase() override {
        Lines.clear();
        Circles.clear();
        Texts.clear();
    }
    void PaintLine(double x1, double y1, double x2, double y2, Colour colour) override {
        Lines.push_back({x1, y1, x2, y2, colour});
    }
    void PaintCircle(double x, double y, double radius, Colour colour) override {
        Circles.push_back({x, y, radius, colour});
    }
    void PaintText(double x, double y, const std::string& text, Colour colour) override {
        Texts.push_back({x, y, text, colour});
    }
    [[nodiscard]] double TextWidth(const std::string& text) const override {
        return LetterWidth * static_cast<double>(text.size());
    }
};

} // namespace corvanta::test
