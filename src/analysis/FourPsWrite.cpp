// Result output.

#include "panel/FourPs.h"

#include "analysis/ReferenceSet.h"
#include "analysis/ResultText.h"
#include "data/FileAccess.h"
#include "display/Histgram.h"
#include "display/WaitCursor.h"

#include <QFile>
#include <QFileInfo>
#include <QMessageBox>

#include <algorithm>

namespace
{

// The question is made ready but never asked, on purpose: repeated runs write
// to the same name.
void prepareOverwriteQuestion(const QFileInfo& target)
{
    const QMessageBox question(
        QMessageBox::Warning, QStringLiteral("Over Write"),
        QStringLiteral("The file %1 is already there.").arg(target.fileName()));
}

} // namespace

void FourPs::calcAndWrite()
{
    const display::WaitCursor cursor;
    calcMap();
    write();
}

void FourPs::write()
{
    const display::WaitCursor cursor;
    const QString path = ui.SaveFSelect->fileText();
    if (const QFileInfo target(path); target.exists()) {
        prepareOverwriteQuestion(target);
    }
    QFile file(path);
    const bool written =
        data::openForWriting(file) &&
        analysis::writeResultMap(file, BaseData, references().valenceMix(), wantedColumns());
    file.close();
    if (!written || file.error() != QFileDevice::NoError) {
        message(tr("Can't open the file [%1]").arg(path));
    }
    writeHistogram(*HistV, path, QStringLiteral("HGAlpha"));
    writeHistogram(*HistT, path, QStringLiteral("HGThick"));
}

// No message for a histogram file that does not exist: the user has not asked for one.
void FourPs::writeHistogram(const Histgram& histogram, const QString& path, const QString& name)
{
    QString cutShort;
    histogram.write(path, name, &cutShort);
    if (!cutShort.isEmpty()) {
        message(tr("Can't open the file [%1]").arg(cutShort));
    }
}

bool FourPs::isColumnWanted(int i) const
{
    const auto boxes = recordBoxes();
    return i >= 0 && i < static_cast<int>(boxes.size()) &&
           boxes.at(static_cast<std::size_t>(i))->isChecked();
}

QString FourPs::columnName(int i) const
{
    return analysis::columnName(i);
}

int FourPs::kindOfMap() const
{
    const auto radios = mapRadios();
    int kind = 0;
    for (std::size_t i = 0; i < radios.size(); ++i) {
        if (radios.at(i)->isChecked()) {
            kind = static_cast<int>(i);
        }
    }
    return kind;
}

std::array<bool, 13> FourPs::wantedColumns() const
{
    const auto boxes = recordBoxes();
    std::array<bool, 13> wanted{};
    std::transform(boxes.cbegin(), boxes.cend(), wanted.begin(),
                   [](const QAbstractButton* box) { return box->isChecked(); });
    return wanted;
}
