#include "core/Colors.h"
#include "ui/ctlKL_Buttons.h"
#include "ui/ctlKL_Digital.h"
#include "ui/ctlKL_Panels.h"
#include "ui/ctlKL_wScrollbar.h"

#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QSignalSpy>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>

namespace {

QImage renderOf(QWidget& w) {
    QImage img(w.size(), QImage::Format_ARGB32);
    img.fill(Qt::magenta);
    w.render(&img);
    return img;
}

QColor bgr(qint64 colorRef) {
    return Colors::fromColorRef(colorRef);
}

void mouse(QWidget& w, QEvent::Type type, int x, Qt::MouseButton button = Qt::LeftButton,
           Qt::MouseButtons held = Qt::LeftButton) {
    QMouseEvent e(type, QPointF(x, w.height() / 2), w.mapToGlobal(QPointF(x, w.height() / 2)),
                  button, held, Qt::NoModifier);
    QApplication::sendEvent(&w, &e);
}

// The colour at the middle of a segment of the display.
QColor segmentColour(ctlKL_Digital& d, int position, ctlKL_Digital::Segment s) {
    return renderOf(d).pixelColor(d.segmentRect(position, s).center());
}

} // namespace

TEST(ctlKL_Digital, LightsExactlyTheSegmentsOfEachDigit) {
    ctlKL_Digital d;
    d.resize(190, 60);
    d.setValue(12 * 60 + 34);
    const QColor light = bgr(65280), dark = bgr(224515);
    const int shown[] = {1, 2, 3, 4};
    const ctlKL_Digital::Segment all[] = {
        ctlKL_Digital::shpTop,        ctlKL_Digital::shpMiddle,  ctlKL_Digital::shpBottom,
        ctlKL_Digital::shpRightTop,   ctlKL_Digital::shpLeftTop, ctlKL_Digital::shpLeftBottom,
        ctlKL_Digital::shpRightBottom};
    const QImage img = renderOf(d);
    for (int pos = 0; pos < 4; ++pos) {
        EXPECT_EQ(d.shownDigit(pos), shown[pos]);
        const int lit = ctlKL_Digital::litSegments(shown[pos]);
        for (auto s : all) {
            const QRect r = d.segmentRect(pos, s);
            ASSERT_TRUE(QRect(QPoint(), d.size()).contains(r)) << pos << " " << s;
            EXPECT_EQ(img.pixelColor(r.center()), (lit & s) ? light : dark) << pos << " " << s;
        }
    }
    // Segments of one digit never overlap, or a lit one would be painted over.
    for (auto a : all) {
        for (auto b : all) {
            if (a == b) continue;
            EXPECT_FALSE(d.segmentRect(0, a).intersects(d.segmentRect(0, b)));
        }
    }
}

// The ordinary seven-segment patterns, written out apart from the control: T top, M middle,
// B bottom, then the four sides (right top, left top, left bottom, right bottom).
TEST(ctlKL_Digital, EveryDigitLightsItsOwnPattern) {
    struct Row {
        int digit;
        const char* lit;
    };
    const Row rows[] = {{0, "TBrlLR"},  {1, "rR"},     {2, "TMBrL"},  {3, "TMBrR"},
                        {4, "lrMR"},    {5, "TMBlR"},  {6, "TMBlLR"}, {7, "TrR"},
                        {8, "TMBrlLR"}, {9, "TMBrlR"}, {10, ""}};
    const std::pair<char, ctlKL_Digital::Segment> names[] = {
        {'T', ctlKL_Digital::shpTop},        {'M', ctlKL_Digital::shpMiddle},
        {'B', ctlKL_Digital::shpBottom},     {'r', ctlKL_Digital::shpRightTop},
        {'l', ctlKL_Digital::shpLeftTop},    {'L', ctlKL_Digital::shpLeftBottom},
        {'R', ctlKL_Digital::shpRightBottom}};
    ctlKL_Digital d;
    d.resize(96, 32);
    for (const Row& row : rows) {
        d.ShowDigit(row.digit, 2);
        const QImage img = renderOf(d);
        for (const auto& [letter, segment] : names) {
            const bool lit = std::strchr(row.lit, letter) != nullptr;
            EXPECT_EQ(img.pixelColor(d.segmentRect(2, segment).center()),
                      lit ? bgr(65280) : bgr(224515))
                << "digit " << row.digit << " segment " << letter;
        }
    }
}

TEST(ctlKL_Digital, TheReadoutSitsCentredAndInsideAtAnySize) {
    ctlKL_Digital d;
    for (const QSize size : {QSize(66, 18), QSize(95, 30), QSize(47, 12)}) {
        d.resize(size);
        const int left = d.segmentRect(0, ctlKL_Digital::shpLeftTop).left();
        const int right = size.width() - 1 - d.segmentRect(3, ctlKL_Digital::shpRightTop).right();
        EXPECT_LE(std::abs(left - right), 1) << size.width();
        for (int pos = 0; pos < 4; ++pos)
            EXPECT_TRUE(
                QRect(QPoint(), size).contains(d.segmentRect(pos, ctlKL_Digital::shpBottom)))
                << size.width() << " " << pos;
    }
}

TEST(ctlKL_Digital, ZeroBlankWhenDisabledAndTimesRollOver) {
    ctlKL_Digital d;
    d.resize(95, 30);
    d.setValue(0);
    for (int p = 0; p < 4; ++p)
        EXPECT_EQ(d.shownDigit(p), 0);
    d.setEnabledProperty(false);
    for (int p = 0; p < 4; ++p)
        EXPECT_EQ(d.shownDigit(p), ctlKL_Digital::Blank);
    EXPECT_EQ(segmentColour(d, 0, ctlKL_Digital::shpTop), bgr(224515));
    d.setValue(59); // a disabled display still shows a time that is not zero
    EXPECT_EQ(ctlKL_Digital::FormatTime(59), "00:59");
    EXPECT_EQ(d.shownDigit(2), 5);
    d.setValue(60);
    EXPECT_EQ(ctlKL_Digital::FormatTime(60), "01:00");
    EXPECT_EQ(d.shownDigit(1), 1);
    d.setValue(-7); // no reading for a negative time: zero, blank while disabled
    EXPECT_EQ(d.shownDigit(3), ctlKL_Digital::Blank);
    d.setValue(100 * 60 + 5); // "100:05": only places 1, 2, 4 and 5 are read
    EXPECT_EQ(d.shownDigit(0), 1);
    EXPECT_EQ(d.shownDigit(1), 0);
    EXPECT_EQ(d.shownDigit(2), 0);
    EXPECT_EQ(d.shownDigit(3), 0);
    d.setValue(1000000); // kept in 16 bits
    EXPECT_EQ(d.value(), 32767);
}

TEST(ctlKL_Digital, NewColoursShowAtOnceAndNonsenseColoursDrawSafely) {
    ctlKL_Digital d;
    d.resize(95, 30);
    d.setValue(8 * 60 + 8);
    d.setColourLight(0x0000FF); // red, as COLORREF
    EXPECT_EQ(segmentColour(d, 1, ctlKL_Digital::shpMiddle), QColor(255, 0, 0));
    d.ReadProperties({{"ColourLight", -5}, {"ColourDark", "garbage"}, {"BackColor", 0x7FFFFFFFLL}});
    EXPECT_EQ(d.ColourDark(), 224515);
    const QImage img = renderOf(d); // nothing outside the widget, no crash
    EXPECT_EQ(img.size(), d.size());
    d.ShowDigit(11, 0); // not a digit: the position keeps what it shows
    EXPECT_EQ(d.shownDigit(0), 0);
}

TEST(ctlKL_wScrollbar, RangeRulesAndHandlePlacement) {
    ctlKL_wScrollbar s;
    s.resize(110, 12);
    QSignalSpy change(&s, &ctlKL_wScrollbar::Change);
    s.setValue(40);
    EXPECT_EQ(s.value(), 40);
    s.setValue(101); // outside the range: dropped
    EXPECT_EQ(s.value(), 40);
    s.setMax(30); // below the value: ignored
    EXPECT_EQ(s.Max(), 100);
    s.setValue(100);
    EXPECT_EQ(s.barPosition(), s.width() - s.barWidth()); // flush at the right end
    s.setValue(0);
    EXPECT_EQ(s.barPosition(), 0);
    EXPECT_EQ(change.count(), 0); // values set by code raise no Change

    s.setMax(0); // an empty range: no division by zero, the handle at the start
    EXPECT_EQ(s.barPosition(), 0);
    s.setMax(100);
    s.setMin(500); // the old minimum is at most the value, so it is stored, above the max
    EXPECT_EQ(s.Min(), 500);
    const QImage img = renderOf(s); // the handle stays on the track
    EXPECT_EQ(img.size(), s.size());
    EXPECT_GE(s.barPosition(), 0);
}

TEST(ctlKL_wScrollbar, DraggingFollowsTheMouseAndHoldsAtTheEnds) {
    ctlKL_wScrollbar s;
    s.resize(110, 12);
    s.setValue(50);
    QSignalSpy change(&s, &ctlKL_wScrollbar::Change);
    QSignalSpy down(&s, &ctlKL_wScrollbar::MouseDown);
    const int b = s.barWidth();

    mouse(s, QEvent::MouseButtonPress, s.barPosition() + b + 20); // beside the handle
    mouse(s, QEvent::MouseMove, 5);
    EXPECT_EQ(down.count(), 1);
    EXPECT_EQ(change.count(), 0);
    EXPECT_EQ(s.value(), 50);
    mouse(s, QEvent::MouseButtonRelease, 5, Qt::LeftButton, Qt::NoButton);

    mouse(s, QEvent::MouseButtonPress, s.barPosition() + b / 2);
    EXPECT_TRUE(s.dragging());
    mouse(s, QEvent::MouseMove, -40); // past the left end
    EXPECT_EQ(s.barPosition(), 0);
    EXPECT_EQ(s.value(), 0);
    mouse(s, QEvent::MouseMove, 500); // past the right end
    EXPECT_EQ(s.value(), 100);
    EXPECT_EQ(s.barPosition(), s.width() - b);
    mouse(s, QEvent::MouseMove, b / 2 + (s.width() - b) / 4); // a quarter of the way
    EXPECT_EQ(s.value(), 25);
    EXPECT_EQ(change.count(), 3);
    mouse(s, QEvent::MouseButtonRelease, 0, Qt::LeftButton, Qt::NoButton);
    EXPECT_FALSE(s.dragging());
}

TEST(ctlKL_Buttons, PressSwapsTheEdgesAndClicksOnlyWhenEnabled) {
    ctlKL_wTextPanel b;
    b.resize(60, 24);
    b.setCaption(QStringLiteral("Play"));
    b.setLinesLightColor(0xFFFFFF);
    b.setLinesDarkColor(0x000080); // dark red
    QSignalSpy click(&b, &ctlKL_wTextPanel::Click);
    EXPECT_EQ(renderOf(b).pixelColor(10, 1), QColor(255, 255, 255)); // top edge light
    EXPECT_EQ(renderOf(b).pixelColor(0, 0), QColor(0, 0, 0));        // border
    mouse(b, QEvent::MouseButtonPress, 10);
    EXPECT_EQ(renderOf(b).pixelColor(10, 1), QColor(128, 0, 0)); // pressed: top edge dark
    EXPECT_EQ(renderOf(b).pixelColor(10, b.height() - 2), QColor(255, 255, 255));
    mouse(b, QEvent::MouseButtonRelease, 10, Qt::LeftButton, Qt::NoButton);
    EXPECT_EQ(renderOf(b).pixelColor(10, 1), QColor(255, 255, 255));
    EXPECT_EQ(click.count(), 1);

    b.setEnabledProperty(false);
    mouse(b, QEvent::MouseButtonPress, 10);
    mouse(b, QEvent::MouseButtonRelease, 10, Qt::LeftButton, Qt::NoButton);
    EXPECT_EQ(click.count(), 1);
    EXPECT_EQ(renderOf(b).pixelColor(10, 1), QColor(255, 255, 255));
}

TEST(ctlKL_Panels, SystemColoursComeFromThePaletteAndPropertiesAreStored) {
    ctlKL_3DPanel panel;
    panel.resize(40, 20);
    QPalette pal = panel.palette();
    pal.setColor(QPalette::Button, QColor(10, 20, 30));
    panel.setPalette(pal);
    EXPECT_EQ(renderOf(panel).pixelColor(20, 10), QColor(10, 20, 30));

    ctlKL_noFocusPanel plain;
    QSignalSpy changed(&plain, &ctlKL_Control::PropertyChanged);
    plain.setPanelColour(0x00FF00);
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed.at(0).at(0).toString(), "PanelColour");
    EXPECT_EQ(plain.WriteProperties().value("PanelColour").toLongLong(), 0x00FF00);
    EXPECT_EQ(plain.focusPolicy(), Qt::NoFocus);
}
