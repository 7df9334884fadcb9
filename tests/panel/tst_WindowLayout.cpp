// What a user reads on every window as it opens: no label or button is cut.

#include "app/Body.h"
#include "display/DispMBase.h"
#include "display/Displays.h"
#include "panel/FourPs.h"

#include <QAbstractButton>
#include <QLabel>
#include <QtTest>

#include <memory>

namespace
{

/// The least room in which the words on @p widget can be read whole. A maximum
/// that the design gives a button goes before the padding that its style would
/// like to have.
QSize roomFor(const QWidget* widget)
{
    const QSize words = widget->fontMetrics().size(0, widget->property("text").toString());
    return widget->sizeHint().boundedTo(widget->maximumSize()).expandedTo(words);
}

/// Labels and buttons in sight on @p window that have not the room they need.
QStringList cutOnes(const QWidget* window)
{
    QStringList cut;
    const QList<QWidget*> children = window->findChildren<QWidget*>();
    for (const QWidget* child : children) {
        const bool reads =
            qobject_cast<const QLabel*>(child) || qobject_cast<const QAbstractButton*>(child);
        const QSize room = reads && child->isVisibleTo(window) ? roomFor(child) : QSize(0, 0);
        if (room.width() > child->width() || room.height() > child->height()) {
            cut << child->objectName() + QLatin1Char(' ') + child->property("text").toString();
        }
    }
    return cut;
}

QStringList cutOnesWhenShown(QWidget* window)
{
    window->show();
    if (!QTest::qWaitForWindowExposed(window)) {
        return {QStringLiteral("not shown")};
    }
    QCoreApplication::processEvents();
    const QStringList cut = cutOnes(window);
    window->hide();
    return cut;
}

} // namespace

class tst_WindowLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void mainWindowCutsNothing();
    void graphWindowOpensAtItsSizeAndCutsNothing();
    void mapWindowsOpenAtTheirSizeAndCutNothing_data();
    void mapWindowsOpenAtTheirSizeAndCutNothing();
    void poppedOutPlotsCutNothing();
    void graphWindowCanBeMadeHalfAsLarge();

private:
    std::unique_ptr<Body> m_body;
    FourPs* m_panel = nullptr;
};

void tst_WindowLayout::initTestCase()
{
    m_body = std::make_unique<Body>();
    m_panel = m_body->findChild<FourPs*>();
    QVERIFY(m_panel != nullptr);
}

void tst_WindowLayout::mainWindowCutsNothing()
{
    QCOMPARE(cutOnesWhenShown(m_body.get()), QStringList());
}

void tst_WindowLayout::graphWindowOpensAtItsSizeAndCutsNothing()
{
    QCOMPARE(cutOnesWhenShown(m_panel->Disps), QStringList());
    QCOMPARE(m_panel->Disps->size(), QSize(850, 853));
}

void tst_WindowLayout::mapWindowsOpenAtTheirSizeAndCutNothing_data()
{
    QTest::addColumn<DispMBase*>("window");
    QTest::newRow("result map") << m_panel->MapDisp;
    QTest::newRow("data map") << m_panel->DMapDisp;
}

void tst_WindowLayout::mapWindowsOpenAtTheirSizeAndCutNothing()
{
    QFETCH(DispMBase*, window);
    QCOMPARE(cutOnesWhenShown(window), QStringList());
    QCOMPARE(window->size(), QSize(578, 528));
}

void tst_WindowLayout::poppedOutPlotsCutNothing()
{
    for (DispABase* plot : std::as_const(m_panel->Disps->disps)) {
        plot->popDock();
        QVERIFY(QTest::qWaitForWindowExposed(plot->pop));
        QCoreApplication::processEvents();
        QCOMPARE(cutOnes(plot->pop), QStringList());
        QCOMPARE(plot->pop->size(), QSize(800, 600));
        plot->popDock();
    }
}

void tst_WindowLayout::graphWindowCanBeMadeHalfAsLarge()
{
    Displays* graphs = m_panel->Disps;
    graphs->show();
    graphs->resize(425, 426);
    QCoreApplication::processEvents();
    QCOMPARE(graphs->size(), QSize(425, 426));
    graphs->hide();
}

QTEST_MAIN(tst_WindowLayout)
#include "tst_WindowLayout.moc"
