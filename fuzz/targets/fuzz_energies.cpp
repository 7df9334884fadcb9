// Tests the parser of the typed list of energies.
//
// The first byte of an input determines the number of energy rows and the encoding. The
// text follows.
#include "data/TextItems.h"
#include "support/FuzzTarget.h"
#include "support/InputText.h"

#include <QList>
#include <QRegularExpression>
#include <QString>

namespace
{

/// Reference implementation: splits the result of QString::simplified() into items. A
/// quoted item ends at the next quote or at the end of the text; any other item ends at a
/// space or at the end of the text.
QList<QString> plainItems(QString rest)
{
    QList<QString> items;
    while (!rest.isEmpty()) {
        rest = rest.mid(rest.startsWith(u' ') ? 1 : 0);
        const bool isQuoted = rest.startsWith(u'"');
        rest = rest.mid(isQuoted ? 1 : 0);
        const qsizetype end = rest.indexOf(isQuoted ? u'"' : u' ');
        items.append(end < 0 ? rest : rest.left(end));
        rest = end < 0 ? QString() : rest.mid(end + (isQuoted ? 1 : 0));
    }
    return items;
}

QList<QString> plainEnergies(const QString& text, int rows)
{
    QList<QString> energies;
    for (const QString& item : plainItems(QString(text).replace(u',', u' ').simplified())) {
        if (item.toDouble() > 0.0 && energies.size() < rows) {
            energies.append(item);
        }
    }
    return energies;
}

} // namespace

void fuzz::tryInput(const QByteArray& bytes)
{
    const auto first = static_cast<unsigned char>(bytes.isEmpty() ? 0 : bytes.front());
    const QString text = textOf(bytes.mid(1), first >= 0x80);
    const int rows = (first & 0x7f) % 16 - 1;
    const QList<QString> energies = data::energiesOfList(text, rows);
    FUZZ_REQUIRE(energies == plainEnergies(text, rows));
    FUZZ_REQUIRE(rows > 0 || energies.isEmpty());
    // A comma must have the same effect as a space. A smaller number of rows must only
    // remove energies from the end of the list.
    FUZZ_REQUIRE(data::energiesOfList(QString(text).replace(u',', u' '), rows) == energies);
    FUZZ_REQUIRE(data::energiesOfList(text, 1 << 30).mid(0, qMax(rows, 0)) == energies);
    for (const QString& energy : energies) {
        FUZZ_REQUIRE(energy.toDouble() > 0.0);
    }
}
