// A Qt plugin that operates and inspects the widgets of the running program. Qt loads
// it if the environment names it (QT_QPA_GENERIC_PLUGINS=aelkinspector); the program
// itself contains no code for it.
//
//   AELK_INSPECTOR_STEPS   what to do once the event loop runs: steps separated by
//                          semicolons
//                            snapshot         adds the state of all widgets to the report
//                            click NAME       clicks the button with this object name
//                            type NAME TEXT   sets the text of the field NAME and emits
//                                             editingFinished()
//                            print NAME       prints the text of the widget NAME
//                            close NAME       closes the window with this object name
//                            exit NUMBER      ends the event loop with this exit status
//                          "A.B" names the widget B inside the widget A.
//   AELK_INSPECTOR_REPORT  the report file: a JSON list with one entry per snapshot

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QGenericPlugin>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QSaveFile>
#include <QStatusBar>
#include <QTextEdit>
#include <QTextStream>
#include <QTimer>

#include <algorithm>

namespace
{

/// The state of @p widget and of its children, in the order of their creation. Qt's own
/// file dialogs are left out.
QJsonObject describe(const QWidget* widget)
{
    QJsonArray children;
    const QObjectList all = widget->children();
    for (const QObject* child : all) {
        const auto* part = qobject_cast<const QWidget*>(child);
        if (part && !qobject_cast<const QFileDialog*>(part)) {
            children.append(describe(part));
        }
    }
    QJsonObject result{{"class", QString::fromLatin1(widget->metaObject()->className())},
                       {"name", widget->objectName()},
                       {"title", widget->windowTitle()},
                       {"isWindow", widget->isWindow()},
                       {"isVisible", widget->isVisible()},
                       {"actions", static_cast<int>(widget->actions().size())},
                       {"children", children}};
    if (qobject_cast<const QLabel*>(widget) || qobject_cast<const QAbstractButton*>(widget)) {
        result["words"] = widget->property("text").toString();
    } else {
        result["value"] = widget->property("text").toString();
    }
    if (const auto* bar = qobject_cast<const QStatusBar*>(widget)) {
        result["message"] = bar->currentMessage();
    }
    return result;
}

QWidget* widgetNamed(const QString& name)
{
    if (name.contains(u'.')) {
        const QWidget* outer = widgetNamed(name.section(u'.', 0, -2));
        return outer->findChild<QWidget*>(name.section(u'.', -1));
    }
    const QWidgetList all = QApplication::allWidgets();
    const auto found = std::find_if(all.cbegin(), all.cend(), [&name](const QWidget* widget) {
        return widget->objectName() == name;
    });
    return found == all.cend() ? nullptr : *found;
}

/// The text of a field, button or text box.
QString textOf(const QWidget* widget)
{
    const auto* box = qobject_cast<const QTextEdit*>(widget);
    return box ? box->toPlainText().trimmed() : widget->property("text").toString();
}

/// The sort key of a window: its object name, followed by its number if it has one.
QString sortKey(const QWidget* window)
{
    const auto* number = window->findChild<QLabel*>(QStringLiteral("NumDisp"));
    return window->objectName() + (number ? number->text() : QString());
}

class Inspector : public QObject
{
    Q_OBJECT

public:
    explicit Inspector(QObject* parent = nullptr)
        : QObject(parent)
        , m_steps(qEnvironmentVariable("AELK_INSPECTOR_STEPS").split(u';', Qt::SkipEmptyParts))
    {
        // A timer with interval 0 fires when the event loop has no other events to process, so
        // each step starts after the events of the previous step have been processed.
        connect(&m_timer, &QTimer::timeout, this, &Inspector::step);
        m_timer.start(0);
    }

private:
    void step()
    {
        if (m_steps.isEmpty()) {
            m_timer.stop();
            return;
        }
        const QString line = m_steps.takeFirst().trimmed();
        const QString verb = line.section(u' ', 0, 0);
        const QString rest = line.section(u' ', 1);
        if (verb == QLatin1String("snapshot")) {
            takeSnapshot();
        } else if (verb == QLatin1String("click")) {
            qobject_cast<QAbstractButton*>(widgetNamed(rest))->click();
        } else if (verb == QLatin1String("type")) {
            auto* edit = qobject_cast<QLineEdit*>(widgetNamed(rest.section(u' ', 0, 0)));
            edit->setText(rest.section(u' ', 1));
            Q_EMIT edit->editingFinished();
        } else if (verb == QLatin1String("print")) {
            QTextStream(stdout) << textOf(widgetNamed(rest)) << '\n';
        } else if (verb == QLatin1String("close")) {
            widgetNamed(rest)->close();
        } else if (verb == QLatin1String("exit")) {
            QCoreApplication::exit(rest.toInt());
        } else {
            qFatal("no such step: %s", qPrintable(line));
        }
    }

    void takeSnapshot()
    {
        QJsonArray windows;
        QWidgetList all = QApplication::topLevelWidgets();
        // Qt keeps the top-level widgets in a set, whose order changes from run to run.
        std::sort(all.begin(), all.end(),
                  [](const QWidget* a, const QWidget* b) { return sortKey(a) < sortKey(b); });
        for (const QWidget* window : std::as_const(all)) {
            if (!window->parentWidget()) {
                windows.append(describe(window));
            }
        }
        m_report.append(
            QJsonObject{{"windows", windows},
                        {"quitsOnLastWindowClosed", QGuiApplication::quitOnLastWindowClosed()}});
        QSaveFile file(qEnvironmentVariable("AELK_INSPECTOR_REPORT"));
        if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(m_report).toJson()) < 0 ||
            !file.commit()) {
            qFatal("the report cannot be written");
        }
    }

    QStringList m_steps;
    QTimer m_timer;
    QJsonArray m_report;
};

} // namespace

class InspectorPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "inspector.json")

public:
    QObject* create(const QString& key, const QString&) override
    {
        return key == QLatin1String("aelkinspector") ? new Inspector : nullptr;
    }
};

#include "InspectorPlugin.moc"
