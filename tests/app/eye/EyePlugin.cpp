// An eye in the running program: a plugin of the platform that Qt loads when the
// environment names it (QT_QPA_GENERIC_PLUGINS=aelkeye). The program is not
// changed for it and does not know of it.
//
//   AELK_EYE_STEPS   what to do once the event loop runs, one step at a time,
//                    with a semicolon between them:
//                      look          adds what is on screen to the report
//                      click NAME    presses the button of this object name
//                      type NAME TEXT  puts the text into the field of this name
//                      tell NAME     prints what the widget of this name says
//                      close NAME    closes the window of this object name
//                      exit NUMBER   ends the event loop with this number
//                    "A.B" names the widget B inside the widget A.
//   AELK_EYE_REPORT  the file of the report: a JSON list, an entry for each look

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

/// What @p widget shows, and its children in the order of their making. Qt's own
/// dialogs are left out.
QJsonObject seen(const QWidget* widget)
{
    QJsonArray children;
    const QObjectList all = widget->children();
    for (const QObject* child : all) {
        const auto* part = qobject_cast<const QWidget*>(child);
        if (part && !qobject_cast<const QFileDialog*>(part)) {
            children.append(seen(part));
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

/// The text of a field, a button or a box of text.
QString wordsOf(const QWidget* widget)
{
    const auto* box = qobject_cast<const QTextEdit*>(widget);
    return box ? box->toPlainText().trimmed() : widget->property("text").toString();
}

/// A window's name, and a number where several have the same.
QString keyOf(const QWidget* window)
{
    const auto* number = window->findChild<QLabel*>(QStringLiteral("NumDisp"));
    return window->objectName() + (number ? number->text() : QString());
}

class Eye : public QObject
{
    Q_OBJECT

public:
    explicit Eye(QObject* parent = nullptr)
        : QObject(parent)
        , m_steps(qEnvironmentVariable("AELK_EYE_STEPS").split(u';', Qt::SkipEmptyParts))
    {
        // Fires when the event loop has nothing else to do.
        connect(&m_timer, &QTimer::timeout, this, &Eye::step);
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
        if (verb == QLatin1String("look")) {
            look();
        } else if (verb == QLatin1String("click")) {
            qobject_cast<QAbstractButton*>(widgetNamed(rest))->click();
        } else if (verb == QLatin1String("type")) {
            auto* edit = qobject_cast<QLineEdit*>(widgetNamed(rest.section(u' ', 0, 0)));
            edit->setText(rest.section(u' ', 1));
            Q_EMIT edit->editingFinished();
        } else if (verb == QLatin1String("tell")) {
            QTextStream(stdout) << wordsOf(widgetNamed(rest)) << '\n';
        } else if (verb == QLatin1String("close")) {
            widgetNamed(rest)->close();
        } else if (verb == QLatin1String("exit")) {
            QCoreApplication::exit(rest.toInt());
        } else {
            qFatal("no such step: %s", qPrintable(line));
        }
    }

    void look()
    {
        QJsonArray windows;
        QWidgetList all = QApplication::topLevelWidgets();
        // Qt keeps them in a set, whose order changes from run to run.
        std::sort(all.begin(), all.end(),
                  [](const QWidget* a, const QWidget* b) { return keyOf(a) < keyOf(b); });
        for (const QWidget* window : std::as_const(all)) {
            if (!window->parentWidget()) {
                windows.append(seen(window));
            }
        }
        m_report.append(
            QJsonObject{{"windows", windows},
                        {"quitsOnLastWindowClosed", QGuiApplication::quitOnLastWindowClosed()}});
        QSaveFile file(qEnvironmentVariable("AELK_EYE_REPORT"));
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

class EyePlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "eye.json")

public:
    QObject* create(const QString& key, const QString&) override
    {
        return key == QLatin1String("aelkeye") ? new Eye : nullptr;
    }
};

#include "EyePlugin.moc"
