#include "solver/SInitGeo.h"
#include "tests/support/Corners.h"
#include "tests/support/EditGeometryTest.h"
#include "tests/support/Testing.h"

#include <string>
#include <vector>

namespace corvanta::test {
namespace {

class CurvePreviewTest : public EditGeometryTest {
  protected:
    CurvePreviewTest() { m_form->tabPages_Changed(pgStaticPoints); }

    [[nodiscard]] const std::vector<SheetCurve>& Curves() const {
        return m_form->Preview.Sheet().Curves;
    }

    /// A channel of a corner along wheel travel from a run of its own, droop first.
    static std::vector<ChartPoint> Line(Suspension corner, int channel = chCamberAngle) {
        CalculateCorner(corner);
        std::vector<ChartPoint> line;
        for (int w = corner.NW + 1; w >= 2; --w) {
            const ChannelCells& cells = corner.WheelStates(corner.StaticRack, w).Channels;
            line.push_back({cells[chWheelTravel], cells[channel]});
        }
        return line;
    }

    [[nodiscard]] Suspension Moved(double x) const {
        Suspension moved = m_document;
        moved.StaticPoints()[ptUWO].X = x;
        return moved;
    }
};

TEST_F(CurvePreviewTest, FollowsTheTypingBesideTheDocument) {
    ASSERT_THAT(Curves(), SizeIs(1));
    EXPECT_EQ(Curves()[0].Points, Line(m_document));
    EXPECT_EQ(m_form->Preview.cboChannel.Text(), "Camber Angle");

    m_form->grdPoints_Typing(RowOf(ptUWO), 1, "12");
    ASSERT_THAT(Curves(), SizeIs(2));
    EXPECT_EQ(Curves()[0].Points, Line(Moved(12)));
    EXPECT_EQ(Curves()[1].Points, Line(m_document));
    EXPECT_EQ(Curves()[1].Style, CurveStyle::Dashed);
    m_form->grdPoints_TypingEnded(); // taken back
    EXPECT_THAT(Curves(), SizeIs(1));
    TypeX(ptUWO, "10+4");
    EXPECT_EQ(Curves()[0].Points, Line(Moved(14)));
    m_form->Preview.Hover(ChartPoint{0, 0});
    ASSERT_TRUE(m_form->Preview.Sheet().Hover);
    EXPECT_THAT(m_form->Preview.Sheet().Hover->Lines[1], StartsWith("Document "));

    Type(m_form->txtBump, "40");
    Type(m_form->txtARBRate, "half typed");
    m_form->tabPages_Changed(pgStaticPoints);
    Suspension further = Moved(14);
    further.Data.Bump = 40;
    InitGeometry(further, m_program.Channels, m_program.Units, m_messages);
    EXPECT_EQ(Curves()[0].Points, Line(further));

    m_form->Preview.cboChannel.Select(m_form->Preview.cboChannel.FindData(chSteerAngle));
    m_form->cboPreviewChannel_Changed();
    EXPECT_EQ(Curves()[0].Points, Line(further, chSteerAngle));
    m_form->Close();
    Reopen().tabPages_Changed(pgStaticPoints);
    EXPECT_EQ(Curves()[0].Points, Line(m_document, chSteerAngle)); // remembered
}

TEST_F(CurvePreviewTest, ADraftThatFailsKeepsTheLastGoodLineAndSaysWhy) {
    TypeX(ptUWO, "12");
    const std::vector<ChartPoint> good = Curves()[0].Points;
    const std::string stood = CellX(ptLWIR);
    TypeX(ptLWIR, "-9000"); // ahead of the front one
    EXPECT_THAT(m_form->Preview.labFault.Caption, StartsWith("Can't be solved"));
    EXPECT_TRUE(m_form->Preview.labFault.Visible && Curves()[0].Faded);
    EXPECT_EQ(Curves()[0].Points, good);
    EXPECT_EQ(Curves()[1].Points, Line(m_document));
    TypeX(ptLWIR, stood);
    TypeX(ptUWO, "13");
    EXPECT_FALSE(m_form->Preview.labFault.Visible || Curves()[0].Faded);
    EXPECT_EQ(Curves()[0].Points, Line(Moved(13)));
    EXPECT_THAT(Prompts(), IsEmpty());
}

} // namespace
} // namespace corvanta::test
