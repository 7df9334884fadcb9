// FourPs: writing of result and histogram files, and the selected columns.

#include "panel/FourPs.h"

#include "analysis/ReferenceSet.h"
#include "analysis/ResultFile.h"
#include "display/Histgram.h"
#include "display/WaitCursor.h"
#include "panel/Wording.h"

#include <QFileInfo>
#include <QMessageBox>

#include <utility>

namespace
{

// The question is built but never shown, on purpose: repeated runs overwrite the
// same file without asking.
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
    if (!analysis::writeResultFile(path, BaseData, m_inputs.references().valenceMix(),
                                   m_inputs.wantedColumns())) {
        message(panel::Wording::cannotOpen(path));
    }
    using NamedHistogram = std::pair<const Histgram*, QString>;
    for (const auto& [histogram, name] :
         {NamedHistogram(HistV, "HGAlpha"), NamedHistogram(HistT, "HGThick")}) {
        // Writes existing histogram files only: the user creates a file as the opt-in, so a
        // missing file is not an error.
        QString incompletePath;
        histogram->write(path, name, &incompletePath);
        if (!incompletePath.isEmpty()) {
            message(panel::Wording::cannotOpen(incompletePath));
        }
    }
}

bool FourPs::isColumnWanted(int i) const
{
    const auto wanted = m_inputs.wantedColumns();
    return i >= 0 && i < analysis::columnCount && wanted.at(static_cast<std::size_t>(i));
}

QString FourPs::columnName(int i) const
{
    return analysis::columnName(i);
}

int FourPs::kindOfMap() const
{
    return m_inputs.kindOfMap();
}
