#include "random/MainWindowUser.h"

#include "panel/FourPs.h"
#include "rows/AEPoint.h"
#include "support/ShownPictures.h"

#include <QPixmapCache>

namespace tests
{

namespace
{

constexpr int maxMessages = 300;
constexpr int maxSpectra = 6;
constexpr int maxPoints = 300;
constexpr double maxBins = 2000;

} // namespace

MainWindowUser::MainWindowUser(Body& body, RandomFiles& files, unsigned seed)
    : m_seed(seed)
    , m_windows(body)
    , m_widgets(m_windows)
    , m_mouse(m_windows)
    , m_files(m_windows, files)
    , m_kinds(m_widgets.kinds() + m_mouse.kinds() + m_files.kinds())
{
    for (const ActionKind& kind : std::as_const(m_kinds)) {
        m_weight += kind.weight;
    }
    resetToFixedState();
}

const ActionKind& MainWindowUser::chosen(Draw& draw) const
{
    int place = draw.upTo(m_weight);
    for (const ActionKind& kind : m_kinds) {
        place -= kind.weight;
        if (place < 0) {
            return kind;
        }
    }
    return m_kinds.last();
}

QString MainWindowUser::kindOf(int action) const
{
    Draw draw(m_seed, action);
    return chosen(draw).name;
}

QString MainWindowUser::act(int action)
{
    Draw draw(m_seed, action);
    const ActionKind& kind = chosen(draw);
    const QString done = kind.name + QStringLiteral(": ") + kind.act(draw);
    processPendingEvents();
    return done;
}

void MainWindowUser::tidy()
{
    limitGrowth();
    m_widgets.shortenTexts();
    const auto& ui = m_windows.panel().ui;
    for (QLineEdit* edit : {ui.HgABoxes, ui.HgTBoxes}) {
        if (edit->text().toDouble() > maxBins) {
            edit->setText(QStringLiteral("51"));
        }
    }
    m_windows.tidy();
}

void MainWindowUser::limitGrowth()
{
    FourPs& panel = m_windows.panel();
    if (panel.ui.Message->document()->blockCount() > maxMessages) {
        panel.ui.Message->clear();
    }
    while (panel.DispMuts.size() > maxSpectra) {
        panel.removeAFile();
        panel.ui.SelectedFs->setCurrentIndex(0);
    }
    if (panel.LCFvs4PS.size() > maxPoints) {
        panel.clearLCFvs4PS(nullptr);
    }
}

// Resets what affects the allocated memory most: dialogs, windows, bins, maps, result,
// displayed spectra, points of the comparison plot, texts and Qt's pixmap cache.
void MainWindowUser::resetToFixedState()
{
    FourPs& panel = m_windows.panel();
    m_files.closeDialogs();
    m_windows.reset();
    for (QLineEdit* edit : {panel.ui.HgABoxes, panel.ui.HgTBoxes}) {
        edit->setText(QStringLiteral("51"));
    }
    Draw draw(0, 0);
    m_files.loadEverything(draw);
    for (AEPoint* row : std::as_const(panel.EPoints)) {
        row->rows.squeeze();
    }
    while (!panel.DispMuts.isEmpty()) {
        panel.ui.SelectedFs->setCurrentIndex(0);
        panel.removeAFile();
    }
    panel.clearLCFvs4PS(nullptr);
    panel.ui.Message->clear();
    clearUndo();
    processPendingEvents();
    QPixmapCache::clear();
}

// setText() clears the undo history of a field. Also cuts each text to 200 characters.
void MainWindowUser::clearUndo()
{
    for (const QWidget* window : m_windows.all()) {
        const auto edits = window->findChildren<QLineEdit*>();
        for (QLineEdit* edit : edits) {
            edit->setText(edit->text().left(200));
        }
    }
}

double MainWindowUser::pixels() const
{
    double pixels = 0.0;
    for (const AEPoint* row : std::as_const(m_windows.panel().EPoints)) {
        pixels += 1.0 * row->xNum * row->yNum;
    }
    for (const QWidget* window : m_windows.all()) {
        pixels += window->isVisible() ? 1.0 * window->width() * window->height() : 0.0;
    }
    return pixels;
}

} // namespace tests
