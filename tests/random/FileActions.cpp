#include "random/FileActions.h"

#include "panel/FourPs.h"
#include "random/WidgetActions.h"
#include "rows/AEPoint.h"
#include "rows/ARefFile.h"
#include "rows/AXafsFileSelect.h"
#include "support/DropInput.h"
#include "support/ShownPictures.h"

#include <QAbstractItemView>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFileSystemModel>

namespace tests
{

namespace
{

QString shortName(const QString& path)
{
    return QFileInfo(path).fileName().left(40);
}

} // namespace

FileActions::FileActions(PanelWindows& windows, RandomFiles& files)
    : m_windows(windows)
    , m_files(files)
{
    m_files.validMap(0);
    for (AFileSelect* row : rowsWithDialogs()) {
        row->setDir(m_files.folder());
        row->dialog->show();
        processPendingEvents();
    }
    closeDialogs();
}

// Returns only one row for each kind of dialog: all dialogs of a kind behave alike, and
// each dialog allocates a megabyte when it is first opened and does not free it when it is
// closed.
QList<AFileSelect*> FileActions::rowsWithDialogs() const
{
    const FourPs& panel = m_windows.panel();
    return {panel.EPoints.first()->FileSelect, panel.XafsFiles.first(), panel.MultiFiles,
            panel.ui.SaveFSelect};
}

QList<ActionKind> FileActions::kinds()
{
    return {
        {"valid file", 8, [this](Draw& draw) { return loadValid(draw); }},
        {"invalid file", 8, [this](Draw& draw) { return loadInvalid(draw); }},
        {"file that changes", 3, [this](Draw& draw) { return loadThenDamage(draw); }},
        {"several files", 3, [this](Draw& draw) { return loadSeveral(draw); }},
        {"all files", 2, [this](Draw& draw) { return loadEverything(draw); }},
        {"drop", 5, [this](Draw& draw) { return drop(draw); }},
        {"write", 5, [this](Draw& draw) { return write(draw); }},
        {"dialog", 1, [this](Draw& draw) { return useDialog(draw); }},
    };
}

AFileSelect* FileActions::someRow(bool ofASpectrum, Draw& draw) const
{
    const FourPs& panel = m_windows.panel();
    return ofASpectrum ? draw.oneOf(panel.XafsFiles) : draw.oneOf(panel.EPoints)->FileSelect;
}

QString FileActions::validFile(bool ofASpectrum, Draw& draw)
{
    if (ofASpectrum) {
        return m_files.validSpectrum(draw.upTo(3));
    }
    return draw.onceIn(6) ? m_files.validBinaryMap(draw.upTo(2)) : m_files.validMap(draw.upTo(9));
}

QString FileActions::loadValid(Draw& draw)
{
    const bool ofASpectrum = draw.onceIn(2);
    AFileSelect* row = someRow(ofASpectrum, draw);
    const QString path = validFile(ofASpectrum, draw);
    row->newFile(path);
    return PanelWindows::nameOf(row) + " loads " + shortName(path);
}

QString FileActions::loadInvalid(Draw& draw)
{
    AFileSelect* row = someRow(draw.onceIn(2), draw);
    // Sometimes uses a valid file, which can be of the wrong kind: a map for a spectrum row
    // or a spectrum for a map row.
    const QString path =
        draw.onceIn(8) ? validFile(draw.onceIn(2), draw) : m_files.invalidFile(draw);
    row->newFile(path);
    return PanelWindows::nameOf(row) + " loads " + shortName(path);
}

// Loads a file, damages it and calculates. The damage must not affect the loaded data. In
// half of the cases, also tries to load the damaged file.
QString FileActions::loadThenDamage(Draw& draw)
{
    const bool ofASpectrum = draw.onceIn(2);
    AFileSelect* row = someRow(ofASpectrum, draw);
    const QString path = validFile(ofASpectrum, draw);
    row->newFile(path);
    const QString change = m_files.damage(path, draw);
    WidgetActions::click(m_windows.panel().ui.CalcMapB);
    if (draw.onceIn(2)) {
        row->newFile(path);
    }
    return PanelWindows::nameOf(row) + " loads " + shortName(path) + ", then " + change;
}

QString FileActions::loadSeveral(Draw& draw)
{
    const FourPs& panel = m_windows.panel();
    const bool forDisplay = draw.onceIn(2);
    QStringList paths;
    for (int i = draw.upTo(forDisplay ? 3 : 11); i >= 0; --i) {
        paths.append(draw.onceIn(4) ? m_files.invalidFile(draw) : validFile(forDisplay, draw));
    }
    (forDisplay ? panel.ui.DispFSelect : panel.MultiFiles)->newFiles(paths);
    return QStringLiteral("%1 %2").arg(paths.size()).arg(forDisplay ? "for display" : "maps");
}

QString FileActions::loadEverything(Draw& draw)
{
    FourPs& panel = m_windows.panel();
    for (int i = 0; i < 2 + draw.upTo(3); ++i) {
        panel.XafsFiles.at(i)->AFileSelect::newFile(m_files.validSpectrum(i % 3));
    }
    panel.ui.TargetFile->AFileSelect::newFile(m_files.validSpectrum(draw.upTo(3)));
    QStringList maps;
    for (int i = 0; i < panel.EPoints.size(); ++i) {
        maps.append(m_files.validMap(i % 5));
    }
    panel.MultiFiles->newFiles(maps);
    for (ARefFile* row : std::as_const(panel.Refs.RefRows)) {
        row->UseCB->setChecked(row->XafsFS->valid);
    }
    const int used = 3 + draw.upTo(5);
    for (int i = 0; i < panel.EPoints.size(); ++i) {
        AEPoint* row = panel.EPoints.at(i);
        row->UseCB->setChecked(i < used);
        row->VPointCB->setChecked(i == 2);
        row->LCFCB->setChecked(i == 0 || i == 4);
    }
    WidgetActions::enterText(panel.MultiEnergys, QStringLiteral("8313 8381 8390 8404.5 8460 8475"));
    WidgetActions::enterText(panel.ui.EdgeE, QStringLiteral("8350"));
    return WidgetActions::click(panel.ui.CalcMapB);
}

QString FileActions::drop(Draw& draw)
{
    const QList<AFileSelect*> rows = m_windows.visible<AFileSelect>();
    if (rows.isEmpty()) {
        return {};
    }
    AFileSelect* row = draw.oneOf(rows);
    const QString path =
        draw.onceIn(3) ? m_files.invalidFile(draw) : validFile(draw.onceIn(2), draw);
    dropFile(row, path);
    return PanelWindows::nameOf(row) + " gets " + shortName(path);
}

QString FileActions::write(Draw& draw)
{
    const auto& ui = m_windows.panel().ui;
    const QString path = m_files.placeToWrite(draw);
    auto* edit = ui.SaveFSelect->findChild<QLineEdit*>(QStringLiteral("FileName"));
    WidgetActions::enterText(edit, path);
    WidgetActions::click(ui.WriteB);
    return shortName(path);
}

QString FileActions::useDialog(Draw& draw)
{
    AFileSelect* row = draw.oneOf(rowsWithDialogs());
    m_boxes.setAccepting(draw.onceIn(2));
    WidgetActions::click(row->SelectB);
    const QString done = useOpenDialog(row, draw);
    m_boxes.setAccepting(false);
    closeDialogs(); // an open dialog can change its selection if the folder changes
    return PanelWindows::nameOf(row) + done;
}

// The dialog shows a message box if the chosen file does not exist or would be
// overwritten. m_boxes answers this message box.
QString FileActions::useOpenDialog(AFileSelect* row, Draw& draw)
{
    QString done;
    rows::FileDialog* dialog = row->dialog;
    const auto* model = dialog->findChild<QFileSystemModel*>();
    for (int i = draw.upTo(3); i > 0; --i) {
        const QString path = draw.onceIn(3) ? m_files.invalidFile(draw) : validFile(i > 1, draw);
        auto* list = dialog->findChild<QAbstractItemView*>(QStringLiteral("listView"));
        list->setCurrentIndex(model->index(path));
        done += u' ' + shortName(path);
    }
    auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (draw.onceIn(3)) {
        name->setText(draw.oneOf<QString>({"x", "result0.dat", "", "..", "\"a\" \"b\""}));
    }
    const auto* buttons = dialog->findChild<QDialogButtonBox*>();
    const bool isSave = row->mode == AFileSelect::SaveMode;
    const int which = draw.upTo(4);
    if (which == 0) {
        return done + ", closed";
    }
    const auto button = which == 1 ? QDialogButtonBox::Cancel
                        : isSave   ? QDialogButtonBox::Save
                                   : QDialogButtonBox::Open;
    QAbstractButton* pressed = buttons->button(button);
    done +=
        u' ' + (pressed->isEnabled() ? WidgetActions::click(pressed) : QStringLiteral("nothing"));
    return done;
}

void FileActions::closeDialogs()
{
    const auto rows = m_windows.panel().findChildren<AFileSelect*>();
    for (const AFileSelect* row : rows) {
        row->dialog->close();
    }
}

} // namespace tests
