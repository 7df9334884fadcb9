// Tests of the reset of a panel that several tests share: no state of one test may
// remain for the next test.

#include "rows/FileDialog.h"
#include "support/SharedPanel.h"
#include "support/SpectrumText.h"
#include "support/TestFiles.h"

#include <QTest>

using namespace tests;

class tst_SharedPanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void resetPanelHasTheTextsAndStatesOfANewPanel();
    void resetPanelHasTheDataOfANewPanel();
    void resetPanelCalculatesLikeANewPanel();
    void resetMakesButtonsExclusiveAgain();
};

namespace
{

/// Changes as much of the panel's state as possible: loads files, calculates, shows
/// windows, and edits all fields.
void changeEverything(FourPs& panel, const QTemporaryDir& dir)
{
    const QString path = writeFile(dir, "a.dat", spectrumText("1.00", "1.5", "1.25", "1"));
    prepareThreePointMaps(panel);
    panel.calcBoth();
    for (AXafsFileSelect* row : std::as_const(panel.XafsFiles)) {
        static_cast<AFileSelect*>(row)->newFile(path);
    }
    panel.receiveNewDispFiles({path});
    panel.EPoints.at(0)->LCFCB->setChecked(true);
    panel.EPoints.at(4)->LCFCB->setChecked(true);
    panel.lcf();
    panel.receiveNewDir(dir.path());
    panel.ui.SaveFSelect->newFile(dir.filePath("out.dat"));
    for (QWidget* window : windowsOf(panel)) {
        window->show();
        for (QAbstractButton* button : window->findChildren<QAbstractButton*>()) {
            if (!button->window()->inherits("QDialog")) {
                button->setChecked(!button->isChecked());
            }
        }
        for (QLineEdit* edit : window->findChildren<QLineEdit*>()) {
            edit->setText(edit->text() + QStringLiteral("0"));
            edit->setModified(true);
        }
        for (QComboBox* box : window->findChildren<QComboBox*>()) {
            box->addItem(QStringLiteral("more"));
        }
    }
    panel.MapDisp->popDock();
    panel.MapDisp->setZRange(-3.0, 7.0);
    panel.MapDisp->CBar->setCBarType(2);
    panel.MapDisp->CBar->setInvertCBar(true);
    for (DispABase* plot : std::as_const(panel.Disps->disps)) {
        plot->setRealCoord(1, 2, 3, 4);
        plot->receiveNowPos(5, 6);
    }
    panel.Disps->disps.at(5)->popDock();
    panel.message(QStringLiteral("a line"));
}

QString textOf(double value)
{
    return QString::number(value, 'g', 17);
}

QStringList dataOf(const AMutE& spectrum)
{
    return {QString::number(spectrum.valid),
            QString::number(spectrum.switchedOn),
            spectrum.filePath,
            spectrum.fileName,
            textOf(spectrum.minEnergy),
            textOf(spectrum.maxMut),
            QString::number(spectrum.points.size()),
            textOf(spectrum.preEdgeEnd),
            textOf(spectrum.edgeEnergy),
            textOf(spectrum.postEdgeStart),
            textOf(spectrum.dE),
            textOf(spectrum.preLine.c),
            textOf(spectrum.postLine.a)};
}

QStringList dataOf(const A2DData& map)
{
    return {QString::number(map.extended), map.headerLines.join(u'/'),
            QString::number(map.rows.size()), QString::number(map.xNum), QString::number(map.yNum)};
}

QStringList dataOf(const AFileSelect& row)
{
    return {row.fileText(),
            row.dir,
            row.fileName,
            row.dialog->directory().path(),
            QString::number(row.dialog->isVisible()),
            QString::number(row.mode),
            QString::number(row.multi),
            row.suffix};
}

QStringList dataOf(const Histgram& histogram)
{
    return {textOf(histogram.minV),
            textOf(histogram.step),
            QString::number(histogram.boxes),
            QString::number(histogram.total),
            QString::number(histogram.under),
            QString::number(histogram.over),
            QString::number(histogram.autoMode)};
}

QStringList dataOf(const DispArea& area)
{
    return {QString::number(area.hasScale), textOf(area.cc.realX0), textOf(area.cc.realY0),
            textOf(area.cc.realX1), textOf(area.cc.realY1)};
}

QStringList dataOf(const DispMBase& window)
{
    return dataOf(*window.DispA) + QStringList{QString::number(window.docked),
                                               QString::number(window.isVisible()),
                                               QString::number(window.pop->isVisible()),
                                               textOf(window.CBar->zmin),
                                               textOf(window.CBar->zmax),
                                               QString::number(window.CBar->nColors),
                                               textOf(window.CBar->imax),
                                               QString::number(window.CBar->invert),
                                               QString::number(window.CBar->autoScale)};
}

QStringList dataOf(const FourPs& panel)
{
    QStringList all;
    for (const AXafsFileSelect* row : panel.XafsFiles) {
        all += dataOf(static_cast<const AMutE&>(*row)) + QStringList{QString::number(row->subPost)};
    }
    for (const AEPoint* row : panel.EPoints) {
        all += dataOf(static_cast<const A2DData&>(*row)) +
               QStringList{QString::number(row->loaded), QString::number(row->subBGForRef),
                           QString::number(row->subBGForTarget)};
    }
    for (const AFileSelect* row : panel.findChildren<AFileSelect*>()) {
        all += dataOf(*row);
    }
    for (const Histgram* histogram :
         QList<Histgram*>{panel.HistV, panel.HistT} + panel.HistRatio + panel.HistDMut) {
        all += dataOf(*histogram);
    }
    for (const DispABase* plot : panel.Disps->disps) {
        all += dataOf(*plot->DispA) + QStringList{QString::number(plot->docked)};
    }
    for (const QColor& color : panel.Colors.colors) {
        all.append(color.name());
    }
    return all + dataOf(panel.BaseData) + dataOf(*panel.MapDisp) + dataOf(*panel.DMapDisp) +
           QStringList{QString::number(panel.DispMuts.size()),
                       QString::number(panel.LCFvs4PS.size()),
                       QString::number(panel.LCFColor),
                       QString::number(panel.LCFMut != nullptr),
                       textOf(panel.TargetV),
                       textOf(panel.TargetT),
                       textOf(panel.scaleX0),
                       textOf(panel.scaleY1)};
}

/// The lines of the message box and the texts of CalcRes and HgATo after one recalculation.
QStringList recalculationOutput(FourPs& panel)
{
    prepareThreePointMaps(panel);
    panel.calcBoth();
    return messages(panel) << panel.ui.CalcRes->text() << panel.ui.HgATo->text();
}

} // namespace

void tst_SharedPanel::resetPanelHasTheTextsAndStatesOfANewPanel()
{
    const QTemporaryDir dir;
    auto panel = std::make_unique<FourPs>();
    changeEverything(*panel, dir);
    resetPanel(*panel);
    const QList<QMap<QString, States>> found = statesOf(*panel);
    const QList<QMap<QString, States>>& expected = initialStates();
    QCOMPARE(found.size(), expected.size());
    for (qsizetype i = 0; i < found.size(); ++i) {
        QCOMPARE(found.at(i).keys(), expected.at(i).keys());
        for (auto widget = found.at(i).cbegin(); widget != found.at(i).cend(); ++widget) {
            const States wanted = expected.at(i)[widget.key()];
            for (auto state = wanted.cbegin(); state != wanted.cend(); ++state) {
                QVERIFY2(widget.value()[state.key()] == state.value(),
                         qPrintable(QStringLiteral("%1: %2 is %3 instead of %4")
                                        .arg(widget.key(), state.key(),
                                             widget.value()[state.key()].toString(),
                                             state.value().toString())));
            }
        }
    }
    closePanel(panel);
}

void tst_SharedPanel::resetPanelHasTheDataOfANewPanel()
{
    const QTemporaryDir dir;
    auto panel = std::make_unique<FourPs>();
    const QStringList fresh = dataOf(*panel);
    changeEverything(*panel, dir);
    QVERIFY(dataOf(*panel) != fresh);
    resetPanel(*panel);
    QCOMPARE(dataOf(*panel), fresh);
    closePanel(panel);
}

void tst_SharedPanel::resetPanelCalculatesLikeANewPanel()
{
    const QTemporaryDir dir;
    auto panel = std::make_unique<FourPs>();
    const QStringList fresh = recalculationOutput(*panel);
    changeEverything(*panel, dir);
    resetPanel(*panel);
    QCOMPARE(recalculationOutput(*panel), fresh);
    closePanel(panel);
}

void tst_SharedPanel::resetMakesButtonsExclusiveAgain()
{
    auto panel = std::make_unique<FourPs>();
    panel->ui.MapValence->group()->setExclusive(false);
    panel->ui.MapC1->setChecked(true);
    resetPanel(*panel);
    QVERIFY(panel->ui.MapValence->isChecked() && !panel->ui.MapC1->isChecked());
    panel->ui.MapC2->setChecked(true);
    QVERIFY(!panel->ui.MapValence->isChecked());
    closePanel(panel);
}

QTEST_MAIN(tst_SharedPanel)
#include "tst_SharedPanel.moc"
