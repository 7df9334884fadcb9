// Tests displayed names and numbers: texts that are shortened, or fitted into a rectangle
// or a field.

#include "support/ByteReader.h"
#include "support/FuzzTarget.h"

#include "display/DrawText.h"
#include "display/FittedEdit.h"
#include "display/LineEditText.h"

#include <QApplication>
#include <QImage>
#include <QStylePainter>

#include <cmath>

namespace
{

constexpr QChar ellipsis(0x2026);

/// Creates the application object at the first input and keeps it, because its construction
/// is slow.
void makeApplication()
{
    static int count = 1;
    static char name[] = "fuzz";                // NOLINT(modernize-avoid-c-arrays)
    static char* arguments[] = {name, nullptr}; // NOLINT(modernize-avoid-c-arrays)
    static const QApplication* const application = [] {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        return new QApplication(count, arguments);
    }();
    Q_UNUSED(application)
}

QString nextText(fuzz::ByteReader& in)
{
    const int form = in.number(0, 31);
    if (form < 8) {
        return QString::number(in.anyDouble(), 'g', in.number(1, 17));
    }
    if (form < 12) {
        return in.text(8) + u'/' + in.text(8);
    }
    const QString text = in.text(24);
    if (form == 31 && !text.isEmpty()) {
        return text.repeated(10000 / text.size());
    }
    return text;
}

void tryShortened(fuzz::ByteReader& in)
{
    QFont font;
    font.setPointSize(in.number(1, 30));
    const QFontMetricsF metrics(font);
    const QString text = nextText(in);
    const int width = in.number(-2, 300);
    const QString shown = display::shortened(text, metrics, width);
    if (metrics.horizontalAdvance(text) <= width) {
        FUZZ_REQUIRE(shown == text);
        return;
    }
    bool isNumber = false;
    text.toDouble(&isNumber);
    if (!isNumber) {
        FUZZ_REQUIRE(shown.size() <= text.size() + 1);
        return;
    }
    const qsizetype e = text.indexOf(u'e', 0, Qt::CaseInsensitive);
    const qsizetype at = shown.indexOf(ellipsis);
    FUZZ_REQUIRE(at >= 0 && text.startsWith(shown.first(at)));
    FUZZ_REQUIRE(at < (e < 0 ? text.size() : e) || at == 0);
    FUZZ_REQUIRE(shown.sliced(at + 1) == (e < 0 ? QString() : text.sliced(e)));
    FUZZ_REQUIRE(at == 0 || metrics.horizontalAdvance(shown) <= width);
}

void tryNumbers(fuzz::ByteReader& in)
{
    QLineEdit edit;
    const double value = in.anyDouble();
    display::showNumber(&edit, value);
    FUZZ_REQUIRE(edit.text() == QString::number(value, 'g', 6) && edit.cursorPosition() == 0);
    const double read = display::numberIn(&edit);
    FUZZ_REQUIRE(!std::isfinite(value) ||
                 std::abs(read - value) <= 5.0000001e-6 * std::abs(value) + 5e-324);
    edit.setText(in.text(12));
    FUZZ_REQUIRE(!std::isnan(display::numberIn(&edit)) ||
                 edit.text().contains(QStringLiteral("nan"), Qt::CaseInsensitive));
}

void tryField(fuzz::ByteReader& in)
{
    display::FittedEdit edit;
    edit.resize(in.number(0, 200), in.number(0, 40));
    const QSize hint = edit.sizeHint();
    const QString text = nextText(in);
    edit.setText(text);
    FUZZ_REQUIRE(edit.sizeHint() == hint);
    FUZZ_REQUIRE(edit.font().pointSizeF() > 0.0);
    QImage image(edit.size().expandedTo({1, 1}), QImage::Format_RGB32);
    edit.render(&image);
    if (!edit.toolTip().isEmpty()) {
        FUZZ_REQUIRE(edit.toolTip() == edit.text() ||
                     edit.toolTip() == edit.text().toHtmlEscaped());
    }
    edit.setText(QString());
    FUZZ_REQUIRE(edit.toolTip().isEmpty() || edit.width() < 40);
    FUZZ_REQUIRE(edit.sizeHint() == hint);
}

double nextLength(fuzz::ByteReader& in)
{
    return in.number(0, 7) == 7 ? in.anyDouble() : in.number(-40, 120);
}

QRectF nextBox(fuzz::ByteReader& in)
{
    return {nextLength(in), nextLength(in), nextLength(in), nextLength(in)};
}

void tryDrawing(fuzz::ByteReader& in)
{
    static const QWidget* const styled = new QWidget;
    QImage image(60, 30, QImage::Format_RGB32);
    image.fill(Qt::white);
    QStylePainter p(&image, const_cast<QWidget*>(styled));
    const QFont font = p.font();
    const QTransform transform = p.transform();
    const int flags = in.oneOf(QList<int>{static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter),
                                          static_cast<int>(Qt::AlignRight | Qt::AlignVCenter),
                                          static_cast<int>(Qt::AlignCenter)});
    const int mode = in.number(0, 1);
    const QRectF box = nextBox(in);
    const QString text = nextText(in);
    DrawText draw;
    switch (in.number(0, 3)) {
    case 0:
        draw.drawText(&p, box, font, flags, mode, text, in.number(0, 20));
        break;
    case 1: {
        const QRectF place = draw.textBox(&p, box, font, flags, mode, text);
        FUZZ_REQUIRE(place.width() >= 0.0 && place.height() >= 0.0);
        break;
    }
    case 2:
        draw.drawTexts(&p, box, nextLength(in), nextLength(in), font, flags, mode,
                       {text, in.text(6)}, in.number(0, 20));
        break;
    default:
        draw.drawTextPairs(&p, box, nextLength(in), nextLength(in), font, {text, in.text(6)},
                           {in.text(4), in.text(4), text}, in.number(0, 20));
        break;
    }
    FUZZ_REQUIRE(p.font() == font && p.transform() == transform);
}

void tryBoxes(fuzz::ByteReader& in)
{
    DrawText draw;
    const QRectF box = nextBox(in);
    bool overlaps = false;
    for (int i = in.number(0, 5); i > 0; --i) {
        const QRectF used = nextBox(in);
        draw.addBox(used);
        overlaps = overlaps || used.normalized().intersects(box.normalized());
    }
    FUZZ_REQUIRE(draw.overlaps(box) == overlaps);
}

} // namespace

void fuzz::tryInput(const QByteArray& bytes)
{
    makeApplication();
    ByteReader in(bytes);
    switch (in.number(0, 5)) {
    case 0:
    case 1:
        return tryShortened(in);
    case 2:
        return tryNumbers(in);
    case 3:
        return tryBoxes(in);
    case 4:
        return tryField(in);
    default:
        return tryDrawing(in);
    }
}
