#include "support/RandomUser.h"

#include "display/DispMBase.h"
#include "display/Legend.h"
#include "display/MarkLines.h"
#include "rows/AEPoint.h"
#include "rows/ARefFile.h"
#include "support/DropInput.h"
#include "support/MapText.h"
#include "support/MouseInput.h"
#include "support/SpectrumText.h"
#include "support/TestFiles.h"

#include <QTest>

namespace tests
{

namespace
{

const QStringList numbers{"0.5", "1", "2.25", "3", "-1", "", "x"};
const QStringList energies{"8313", "8381", "8390", "8404.5", "8460", "8350.25", "", "x"};
const QStringList offsets{"-50", "-20", "100", "60", "0"};

} // namespace

RandomUser::RandomUser(FourPs& panel, unsigned seed)
    : m_panel(panel)
    , m_random(seed)
{
    makeFiles();
    makeKinds();
    makeMouseKinds();
    for (const Kind& kind : std::as_const(m_kinds)) {
        m_weight += kind.weight;
    }
    loadEverything();
}

// Uses the remainder, because the numbers of std::uniform_int_distribution differ between
// standard libraries.
int RandomUser::upTo(int count)
{
    return static_cast<int>(m_random() % static_cast<unsigned>(count));
}

QString RandomUser::act()
{
    m_staleSurface.clear();
    int place = upTo(m_weight);
    for (const Kind& kind : std::as_const(m_kinds)) {
        place -= kind.weight;
        if (place < 0) {
            return kind.name + QStringLiteral(": ") + kind.act();
        }
    }
    return {};
}

void RandomUser::makeFiles()
{
    m_spectra = {writeFile(m_dir, "a.dat", spectrumText("0.5", "2", "1.5", "1")),
                 writeFile(m_dir, "b.dat", spectrumText("0.25", "0.5", "1.75", "1.5")),
                 writeFile(m_dir, "c.dat", spectrumText("0.75", "1.25", "1", "0.5"))};
    m_maps = {writeFile(m_dir, "m0.dat", mapText(8, 6, 0, {})),
              writeFile(m_dir, "m1.dat", mapText(8, 6, 1, {})),
              writeFile(m_dir, "m2.dat", mapText(8, 6, 2, "8381")),
              writeFile(m_dir, "m3.dat", mapText(5, 4, 3, {}))};
    m_invalidFiles = {writeFile(m_dir, "words.dat", "no number\n"),
                      writeFile(m_dir, "empty.dat", {}), m_dir.filePath("missing.dat"), QString()};
}

void RandomUser::makeKinds()
{
    const auto& ui = m_panel.ui;
    const auto& rows = m_panel.EPoints;
    const auto& references = m_panel.Refs.RefRows;
    const auto add = [this](const char* name, int weight, std::function<QString()> act) {
        m_kinds.append({QString::fromLatin1(name), weight, std::move(act)});
    };
    const auto clicks = [&](const char* name, int weight, const QList<QAbstractButton*>& buttons) {
        add(name, weight, [this, buttons] { return click(oneOf(buttons)); });
    };
    const auto texts = [&](const char* name, int weight, const QList<QLineEdit*>& edits,
                           const QStringList& choice) {
        add(name, weight, [this, edits, choice] { return type(oneOf(edits), choice); });
    };
    QList<QAbstractButton*> boxes;
    QList<QAbstractButton*> shown;
    QList<QLineEdit*> energyEdits;
    QList<QLineEdit*> muts;
    for (const AEPoint* row : rows) {
        boxes += {row->UseCB, row->LCFCB, row->VPointCB};
        shown += row->ShowMapB;
        energyEdits += row->Energy;
        muts += row->mutEdits + QList<QLineEdit*>{row->MutT};
    }
    QList<QAbstractButton*> uses;
    QList<QLineEdit*> valences;
    for (const ARefFile* row : references) {
        uses += row->UseCB;
        valences += row->Valence;
    }
    QList<QLineEdit*> shifts;
    for (const AXafsFileSelect* row : std::as_const(m_panel.XafsFiles)) {
        shifts += row->AFileSelect::dE;
    }
    clicks("box of a row", 12, boxes);
    clicks("Show of a row", 3, shown);
    clicks("Use of a reference", 8, uses);
    texts("energy", 8, energyEdits, energies);
    texts("mut", 3, muts, numbers);
    texts("valence", 8, valences, numbers);
    texts("dE", 3, shifts, {"0", "3", "-4"});
    texts("edge", 5, {ui.EdgeE, ui.PreEEndDE, ui.PostEStartDE}, offsets + energies);
    texts("list of energies", 3, {m_panel.MultiEnergys}, {"8300 8340", "8350", "", "8360 x 8370"});
    texts("limits", 8, {ui.HgAFrom, ui.HgATo, ui.HgTFrom, ui.HgTTo}, numbers);
    texts("number of boxes", 2, {ui.HgABoxes, ui.HgTBoxes}, {"5", "11", "1", ""});
    clicks("Auto", 2, {ui.HgAAuto, ui.HgTAuto});
    clicks("method", 4,
           {ui.TypeNonEquiv, ui.radioButton, ui.NonEquivBGLinear, ui.NonEquivBGVic,
            ui.SubPostEforRef, ui.SubPreEforRef, ui.SubPostEforTarget, ui.SubPreEforTarget});
    clicks("normalisation", 3, {ui.NNone, ui.NBySubPre, ui.NByEJ, ui.NBy2Vics});
    clicks("series", 6,
           {ui.HgValence, ui.HgRatio1, ui.HgRatio2, ui.HgRatio3, ui.HgAmount, ui.HgdMut1,
            ui.HgdMut2, ui.HgMut0});
    clicks("quantity", 5,
           {ui.MapValence, ui.MapAmount, ui.MapRatio1, ui.MapRatio2, ui.MapDMut1, ui.MapC1});
    clicks("grid", 3, {ui.MapWGrid});
    clicks("calculation", 8, {ui.CalcMapB, ui.CalcTargetB, ui.LCFB, ui.WriteB});
    clicks("Remove", 2, {ui.RemoveAFile});
    add("file", 8, [this] { return load(); });
    add("drop", 3, [this] { return drop(); });
    add("all files", 4, [this] { return loadEverything(); });
}

void RandomUser::makeMouseKinds()
{
    m_kinds += QList<Kind>{
        {"wheel", 6, [this] { return turnTheWheel(); }},
        {"drag in a plot", 4, [this] { return dragInPlot(); }},
        {"double click in a plot", 5, [this] { return doubleClickInPlot(); }},
        {"press in the legend", 4, [this] { return pressInLegend(); }},
        {"line", 8, [this] { return dragLine(); }},
        {"bar", 4, [this] { return dragBar(); }},
        {"double click on a bar", 3, [this] { return doubleClickBar(); }},
        {"limit of a bar", 4,
         [this] {
             const DispMBase* map = oneOf(maps());
             return type(upTo(2) == 0 ? map->MinV : map->MaxV, numbers);
         }},
        {"P/D", 2, [this] { return popOrDock(); }},
    };
}

QString RandomUser::loadEverything()
{
    for (int i = 0; i < 3; ++i) {
        m_panel.XafsFiles.at(i)->AFileSelect::newFile(m_spectra.at(i));
    }
    m_panel.ui.TargetFile->AFileSelect::newFile(m_spectra.at(1 + upTo(2)));
    m_panel.MultiFiles->newFiles(m_maps.first(3) + m_maps.first(1));
    if (upTo(2) == 0) {
        m_panel.ui.DispFSelect->newFiles({m_spectra.at(2), m_invalidFiles.at(0), m_spectra.at(0)});
    }
    for (int i = 0; i < 2; ++i) {
        m_panel.Refs.RefRows.at(i)->UseCB->setChecked(true);
    }
    for (int i = 0; i < m_panel.EPoints.size(); ++i) {
        AEPoint* row = m_panel.EPoints.at(i);
        row->UseCB->setChecked(i < 4);
        row->VPointCB->setChecked(i == 2);
        row->LCFCB->setChecked(i == 0 || i == 4);
    }
    m_panel.newMultiEnergys();
    return click(m_panel.ui.CalcMapB);
}

QString RandomUser::click(QAbstractButton* button)
{
    // Clicks on the indicator, because a check box or radio button reacts only there and on
    // its text.
    const QPointF at(std::min(8, button->width() / 2), button->height() / 2);
    press(button, at);
    release(button, at);
    return button->objectName() + (button->isChecked() ? " is on" : "");
}

QString RandomUser::type(QLineEdit* edit, const QStringList& texts)
{
    const bool replace = upTo(3) > 0;
    const QString text = oneOf(texts);
    if (replace) {
        QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(edit, Qt::Key_Delete);
    }
    QTest::keyClicks(edit, text);
    const bool confirm = upTo(2) == 0;
    if (confirm) {
        QTest::keyClick(edit, Qt::Key_Return);
    }
    return edit->objectName() + " = " + edit->text() + (confirm ? ", Enter" : "");
}

QString RandomUser::load()
{
    const bool good = upTo(3) > 0;
    const int which = upTo(3);
    if (which == 0) {
        AEPoint* row = oneOf(m_panel.EPoints);
        const QString path = oneOf(good ? m_maps : m_invalidFiles + m_spectra);
        row->FileSelect->newFile(path);
        return row->NumDisp->text() + path;
    }
    if (which == 1) {
        m_panel.ui.DispFSelect->newFiles({oneOf(good ? m_spectra : m_invalidFiles)});
        return "for display";
    }
    AXafsFileSelect* row = oneOf(m_panel.XafsFiles);
    const QString path = oneOf(good ? m_spectra : m_invalidFiles);
    if (path.isEmpty()) {
        return click(row->ClearB);
    }
    row->AFileSelect::newFile(path);
    return QString::number(m_panel.XafsFiles.indexOf(row)) + " " + path;
}

QString RandomUser::drop()
{
    const bool ofASpectrum = upTo(2) == 0;
    AFileSelect* row = ofASpectrum ? oneOf(m_panel.XafsFiles) : oneOf(m_panel.EPoints)->FileSelect;
    const QString path = oneOf((ofASpectrum ? m_spectra : m_maps) + m_invalidFiles.first(3));
    dropFile(row, path);
    return path;
}

QList<DispMBase*> RandomUser::maps() const
{
    return {m_panel.MapDisp, m_panel.DMapDisp};
}

QList<DispArea*> RandomUser::surfaces() const
{
    QList<DispArea*> all;
    for (const DispABase* plot : std::as_const(m_panel.Disps->disps)) {
        if (plot->DispA->isVisible()) {
            all.append(plot->DispA);
        }
    }
    for (const DispMBase* map : maps()) {
        all.append({map->DispA, map->DispA}); // listed twice to be chosen more often
    }
    return all;
}

QPointF RandomUser::positionIn(const QWidget* widget)
{
    const int x = upTo(widget->width());
    return {double(x), double(upTo(widget->height()))};
}

QString RandomUser::turnTheWheel()
{
    DispArea* surface = oneOf(surfaces());
    const QPointF at = positionIn(surface);
    move(surface, at);
    turnWheel(surface, at, {0, upTo(2) == 0 ? 120 : -120});
    return surface->parentWidget()->parentWidget()->objectName();
}

QString RandomUser::dragInPlot()
{
    DispArea* surface = oneOf(surfaces());
    const auto keys = upTo(3) == 0 ? Qt::ShiftModifier : Qt::NoModifier;
    press(surface, positionIn(surface), Qt::LeftButton, keys);
    drag(surface, positionIn(surface), keys);
    if (upTo(2) == 0) {
        release(surface, positionIn(surface), Qt::LeftButton, keys);
        markThicknessAsStale(surface);
    }
    return surface->parentWidget()->parentWidget()->objectName();
}

void RandomUser::markThicknessAsStale(const DispArea* released)
{
    if (released == m_panel.Disps->frame(Displays::DLCFvs4PS)->DispA) {
        m_staleSurface = m_panel.Disps->frame(Displays::DDMutVsA)->Title->text();
    }
}

QString RandomUser::doubleClickInPlot()
{
    DispArea* surface = oneOf(surfaces());
    const QPointF at = positionIn(surface);
    const auto button = upTo(4) == 0 ? Qt::RightButton : Qt::LeftButton;
    const auto keys = oneOf(QList<Qt::KeyboardModifier>{Qt::NoModifier, Qt::NoModifier,
                                                        Qt::ShiftModifier, Qt::ControlModifier});
    press(surface, at, button, keys);
    release(surface, at, button, keys);
    doubleClick(surface, at, button, keys);
    if (upTo(2) == 0) {
        release(surface, at, button, keys);
        markThicknessAsStale(surface);
    }
    return surface->parentWidget()->parentWidget()->objectName();
}

QString RandomUser::pressInLegend()
{
    DispArea* surface = m_panel.Disps->frame(Displays::DMuts)->DispA;
    const int row = upTo(3);
    press(surface, display::Legend(surface->cc).box(row).center());
    release(surface, display::Legend(surface->cc).box(row).center());
    return QString::number(row);
}

QString RandomUser::dragLine()
{
    const auto id = oneOf(QList{Displays::DMuts, Displays::DRef1, Displays::DTarget});
    DispArea* surface = m_panel.Disps->frame(id)->DispA;
    const int line = upTo(static_cast<int>(surface->markLines->lines.size()));
    const QPointF from(surface->cc.r2sX(surface->markLines->value(line)), 20.0);
    press(surface, from);
    drag(surface, from + QPointF(7.0, 0.0));
    const bool isReleased = upTo(2) == 0;
    if (isReleased) {
        release(surface, from + QPointF(9.0, 0.0));
    }
    return QString::number(line) + (isReleased ? ", released" : "");
}

QString RandomUser::dragBar()
{
    cBar* bar = oneOf(maps())->CBar;
    press(bar, {3.0, double(upTo(2) == 0 ? bar->maxLineY : bar->minLineY)});
    drag(bar, positionIn(bar));
    if (upTo(2) == 0) {
        release(bar, positionIn(bar));
    }
    return {};
}

QString RandomUser::doubleClickBar()
{
    const DispMBase* map = oneOf(maps());
    const QPointF at = positionIn(map->CBar);
    doubleClick(map->CBar, at);
    m_staleSurface = map->Title->text();
    return m_staleSurface;
}

QString RandomUser::popOrDock()
{
    const int which = upTo(5);
    if (which < 2) {
        return click(maps().at(which)->PopDockB);
    }
    DispABase* plot = m_panel.Disps->disps.at(upTo(10));
    if (!plot->docked && upTo(2) == 0) {
        plot->pop->close();
        return plot->Title->text() + " closed";
    }
    return click(plot->PopDockB) + plot->Title->text();
}

} // namespace tests
