// The program as a user starts it, seen from inside by the plugin in eye/.

#include "support/QmReader.h"
#include "support/TestFiles.h"
#include "support/Vocabulary.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

using namespace tests;

namespace
{

constexpr int patienceMs = 60000;

/// What one run of the program left.
struct Run {
    QJsonArray looks; ///< what each look saw
    int status = -1;  ///< -1 when the program did not end by itself
    QByteArray output;
    QByteArray errors;

    QJsonArray windows(int look = 0) const { return looks.at(look)["windows"].toArray(); }
};

/// Runs the program with these arguments; @p steps are those of the plugin.
Run runProgram(const QStringList& arguments, const QString& steps)
{
    const QTemporaryDir folder;
    const QString report = folder.filePath(QStringLiteral("report.json"));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("aelkeye"));
    environment.insert(QStringLiteral("QT_PLUGIN_PATH"), QStringLiteral(AELK_PLUGINS));
    // Qt would say that it has to choose one by itself.
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), folder.path());
    environment.insert(QStringLiteral("AELK_EYE_STEPS"), steps);
    environment.insert(QStringLiteral("AELK_EYE_REPORT"), report);
    QProcess program;
    program.setProcessEnvironment(environment);
    program.setWorkingDirectory(folder.path());
    program.start(QStringLiteral(AELK_PROGRAM), arguments);
    Run run;
    if (program.waitForFinished(patienceMs) && program.exitStatus() == QProcess::NormalExit) {
        run.status = program.exitCode();
    }
    program.kill(); // the one that waits for a user in vain
    program.waitForFinished(patienceMs);
    run.output = program.readAllStandardOutput();
    run.errors = program.readAllStandardError();
    run.looks = QJsonDocument::fromJson(readFile(report)).array();
    return run;
}

/// Looks once and ends with status 0.
Run lookAt(const QStringList& arguments)
{
    return runProgram(arguments, QStringLiteral("look; exit 0"));
}

using Visit = std::function<void(const QJsonObject& widget)>;

/// Every widget, each before its children.
void visitAll(const QJsonArray& widgets, const Visit& visit)
{
    for (const QJsonValue& widget : widgets) {
        visit(widget.toObject());
        visitAll(widget["children"].toArray(), visit);
    }
}

QList<QJsonObject> allWidgets(const QJsonArray& windows)
{
    QList<QJsonObject> widgets;
    visitAll(windows, [&widgets](const QJsonObject& widget) { widgets.append(widget); });
    return widgets;
}

/// The first widget of this name; empty without one.
QJsonObject widgetNamed(const QJsonArray& windows, const QString& name)
{
    QJsonObject found;
    visitAll(windows, [&](const QJsonObject& widget) {
        if (found.isEmpty() && widget["name"] == name) {
            found = widget;
        }
    });
    return found;
}

QString wordsOn(const QJsonArray& windows, const QString& name)
{
    return widgetNamed(windows, name)["words"].toString();
}

QStringList visibleWindows(const QJsonArray& windows)
{
    QStringList names;
    for (const QJsonValue& window : windows) {
        if (window["isVisible"].toBool()) {
            names << window["name"].toString();
        }
    }
    return names;
}

/// Rows for a test that holds in both languages.
void inBothLanguages()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("English") << "-e";
    QTest::newRow("Japanese") << "-j";
}

QString withNumber(const QString& text, int number)
{
    return text.arg(number);
}

/// The numbers that stand beside the energy rows, once in the panel's grid and
/// once in the row's own, never shown frame.
bool isRowNumber(const QString& text)
{
    bool isNumber = false;
    const int number = text.endsWith(QLatin1String(":  ")) ? text.chopped(3).toInt(&isNumber)
                                                           : text.toInt(&isNumber);
    return isNumber && number >= 1 && number <= 8;
}

} // namespace

class tst_Program : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void tableStandsInTheProgramAsItIs();
    void argumentsChooseTheLanguage_data();
    void argumentsChooseTheLanguage();
    void allLabelsAreTheirSourcesInEnglish();
    void allLabelsAreThoseOfTheTableInJapanese();
    void textsOutsideTheTableShowTheirSourceInBothLanguages_data();
    void textsOutsideTheTableShowTheirSourceInBothLanguages();
    void fieldsHoldTheSameInBothLanguages();

    void titleIsTheNameOfTheProgram_data();
    void titleIsTheNameOfTheProgram();
    void menuBarAndStatusBarAreThereAndEmpty_data();
    void menuBarAndStatusBarAreThereAndEmpty();
    void onlyTheMainWindowShowsAtStart_data();
    void onlyTheMainWindowShowsAtStart();
    void startSaysNothing_data();
    void startSaysNothing();

    void closingTheLastWindowEndsWithZero();
    void statusIsThatOfTheEventLoop_data();
    void statusIsThatOfTheEventLoop();
    void openWindowKeepsTheProgramRunning_data();
    void openWindowKeepsTheProgramRunning();
    void windowsCloseInEitherOrder_data();
    void windowsCloseInEitherOrder();

private:
    QString translated(const QString& context, const QString& source) const;
    QString wordInJapanese(const QString& source) const;

    QMap<Asked, QString> m_translations; ///< those that are not empty
    Run m_english;
    Run m_japanese;
};

void tst_Program::initTestCase()
{
    const std::optional<QmTable> table = readQm(readFile(QStringLiteral(":/qelk_ja_JP.qm")));
    QVERIFY(table);
    for (const QmMessage& message : table->messages) {
        if (!message.translation.isEmpty()) {
            m_translations.insert(
                {QString::fromUtf8(message.context), QString::fromUtf8(message.source)},
                message.translation);
        }
    }
    m_english = lookAt({"-e"});
    m_japanese = lookAt({"-j"});
    for (const Run& run : {m_english, m_japanese}) {
        QVERIFY2(run.status == 0, run.errors.constData());
        QCOMPARE(run.looks.size(), 1);
    }
}

/// What the table has for a text, its source if that is nothing.
QString tst_Program::translated(const QString& context, const QString& source) const
{
    return m_translations.value({context, source}, source);
}

/// What has to stand in Japanese where English has @p source. Titles of forms
/// aside, no two classes say the same word differently.
QString tst_Program::wordInJapanese(const QString& source) const
{
    for (int n = 1; n <= 4; ++n) {
        if (source == withNumber(QStringLiteral("Ref %1"), n)) {
            return withNumber(translated(QStringLiteral("FourPs"), QStringLiteral("Ref %1")), n);
        }
    }
    for (auto context = vocabulary.cbegin(); context != vocabulary.cend(); ++context) {
        const QString word = translated(context.key(), source);
        if (word != source) {
            return word;
        }
    }
    return source;
}

void tst_Program::tableStandsInTheProgramAsItIs()
{
    const QByteArray table = readFile(QStringLiteral(":/qelk_ja_JP.qm"));
    QVERIFY(table.size() > 5000);
    QVERIFY(readFile(QStringLiteral(AELK_PROGRAM)).contains(table));
}

void tst_Program::argumentsChooseTheLanguage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("isEnglish");
    QTest::newRow("no argument is Japanese") << QStringList{} << false;
    QTest::newRow("-j is Japanese") << QStringList{"-j"} << false;
    QTest::newRow("-e is English") << QStringList{"-e"} << true;
    QTest::newRow("-e -j is Japanese") << QStringList{"-e", "-j"} << false;
    QTest::newRow("-j -e is English") << QStringList{"-j", "-e"} << true;
    QTest::newRow("the last of three wins") << QStringList{"-e", "-j", "-e"} << true;
    QTest::newRow("-E is ignored") << QStringList{"-E"} << false;
    QTest::newRow("-J is ignored") << QStringList{"-J"} << false;
    QTest::newRow("-J does not undo -e") << QStringList{"-e", "-J"} << true;
    QTest::newRow("-E does not undo -j") << QStringList{"-j", "-E"} << false;
    QTest::newRow("a file name is ignored") << QStringList{"map.dat"} << false;
    QTest::newRow("unknown words are ignored")
        << QStringList{"--help", "--version", "-x", "english", "e", ""} << false;
    QTest::newRow("unknown words around -e") << QStringList{"-x", "-e", "map.dat", "j"} << true;
    QTest::newRow("unknown words around both")
        << QStringList{"one", "-e", "two", "-j", "three"} << false;
    QTest::newRow("no part of a word counts")
        << QStringList{"--e", "-en", "-ej", "-e=1", " -e", "-e "} << false;
}

void tst_Program::argumentsChooseTheLanguage()
{
    QFETCH(QStringList, arguments);
    QFETCH(bool, isEnglish);
    const Run run = lookAt(arguments);
    QVERIFY2(run.status == 0, run.errors.constData());
    const QJsonArray windows = run.windows();
    QCOMPARE(wordsOn(windows, "label_10"), isEnglish ? QString("Valence") : QStringLiteral("価数"));
    QCOMPARE(wordsOn(windows, "label_14"),
             isEnglish ? QString("Edge[eV]") : QStringLiteral("吸収端[eV]"));
    QCOMPARE(wordsOn(windows, "TypeNonEquiv"),
             isEnglish ? QString("Non Equiv. Meth.") : QStringLiteral("非等価法"));
    QCOMPARE(windows, isEnglish ? m_english.windows() : m_japanese.windows());
}

void tst_Program::allLabelsAreTheirSourcesInEnglish()
{
    QSet<QString> sources{""};
    for (const Asked& asked : allAsked()) {
        sources.insert(asked.second);
    }
    for (int n = 1; n <= 4; ++n) {
        sources.insert(withNumber(QStringLiteral("Ref %1"), n));
    }
    QSet<QString> shown;
    for (const QJsonObject& widget : allWidgets(m_english.windows())) {
        const QString words = widget["words"].toString();
        QVERIFY2(sources.contains(words) || isRowNumber(words), qPrintable(words));
        shown.insert(words);
    }
    QVERIFY(shown.contains("Amouont")); // as it is written
    QVERIFY(shown.contains("  Non Equiv. Meth."));
    QVERIFY(shown.contains("Histgram of dMut"));
}

void tst_Program::allLabelsAreThoseOfTheTableInJapanese()
{
    const QList<QJsonObject> english = allWidgets(m_english.windows());
    const QList<QJsonObject> japanese = allWidgets(m_japanese.windows());
    QCOMPARE(japanese.size(), english.size());
    int differing = 0;
    for (int i = 0; i < english.size(); ++i) {
        const QString name = english.at(i)["name"].toString();
        QCOMPARE(japanese.at(i)["name"].toString(), name);
        const QString source = english.at(i)["words"].toString();
        const QString words = japanese.at(i)["words"].toString();
        QCOMPARE(words, wordInJapanese(source));
        differing += words == source ? 0 : 1;
    }
    QVERIFY(differing > 150);
}

void tst_Program::textsOutsideTheTableShowTheirSourceInBothLanguages_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("words");
    QTest::newRow("multi points") << "radioButton"
                                  << "multi points";
    QTest::newRow("with Grid") << "MapWGrid"
                               << "with Grid";
    QTest::newRow("LCF vs MPS") << "DLCFvs4PS"
                                << "LCF vs MPS";
}

void tst_Program::textsOutsideTheTableShowTheirSourceInBothLanguages()
{
    QFETCH(QString, name);
    QFETCH(QString, words);
    for (const Run& run : {m_english, m_japanese}) {
        const QJsonObject widget = widgetNamed(run.windows(), name);
        QVERIFY(!widget.isEmpty());
        // Of a plot it is the label that names it.
        const QJsonObject label = widget.contains("words")
                                      ? widget
                                      : widgetNamed(QJsonArray{widget}, QStringLiteral("Title"));
        QCOMPARE(label["words"].toString(), words);
    }
}

void tst_Program::fieldsHoldTheSameInBothLanguages()
{
    const QList<QJsonObject> english = allWidgets(m_english.windows());
    const QList<QJsonObject> japanese = allWidgets(m_japanese.windows());
    for (int i = 0; i < english.size(); ++i) {
        QCOMPARE(japanese.at(i)["value"], english.at(i)["value"]);
    }
    QCOMPARE(widgetNamed(m_japanese.windows(), "EdgeE")["value"].toString(), QString("8350"));
    QCOMPARE(widgetNamed(m_japanese.windows(), "PreEEndDE")["value"].toString(), QString("-50"));
}

void tst_Program::titleIsTheNameOfTheProgram_data()
{
    inBothLanguages();
}

void tst_Program::titleIsTheNameOfTheProgram()
{
    QFETCH(QString, language);
    const QJsonArray windows = (language == "-e" ? m_english : m_japanese).windows();
    QCOMPARE(widgetNamed(windows, "Body")["title"].toString(), QString("aelk"));
    for (const QJsonObject& widget : allWidgets(windows)) {
        const QString title = widget["title"].toString();
        QVERIFY2(title != "MainWindow" && title != translated("Body", "MainWindow"),
                 qPrintable(widget["name"].toString()));
    }
}

void tst_Program::menuBarAndStatusBarAreThereAndEmpty_data()
{
    inBothLanguages();
}

void tst_Program::menuBarAndStatusBarAreThereAndEmpty()
{
    QFETCH(QString, language);
    const QJsonArray windows = (language == "-e" ? m_english : m_japanese).windows();
    const QJsonObject menuBar = widgetNamed(windows, "menubar");
    QCOMPARE(menuBar["class"].toString(), QString("QMenuBar"));
    QCOMPARE(menuBar["actions"].toInt(-1), 0);
    const QJsonObject statusBar = widgetNamed(windows, "statusbar");
    QCOMPARE(statusBar["class"].toString(), QString("QStatusBar"));
    QVERIFY(statusBar["isVisible"].toBool());
    QCOMPARE(statusBar["message"].toString(), QString());
    for (const QJsonObject& part : allWidgets(QJsonArray{statusBar})) {
        QCOMPARE(part["words"].toString(), QString());
    }
}

void tst_Program::onlyTheMainWindowShowsAtStart_data()
{
    inBothLanguages();
}

void tst_Program::onlyTheMainWindowShowsAtStart()
{
    QFETCH(QString, language);
    const Run& run = language == "-e" ? m_english : m_japanese;
    QCOMPARE(visibleWindows(run.windows()), QStringList{"Body"});
}

void tst_Program::startSaysNothing_data()
{
    inBothLanguages();
}

void tst_Program::startSaysNothing()
{
    QFETCH(QString, language);
    const Run& run = language == "-e" ? m_english : m_japanese;
    QCOMPARE(run.output, QByteArray());
    QByteArrayList said = run.errors.split('\n');
    said.removeAll("");
    // What the platform without a screen says of itself.
    said.removeAll("This plugin does not support propagateSizeHints()");
    QCOMPARE(said, QByteArrayList());
}

void tst_Program::closingTheLastWindowEndsWithZero()
{
    const Run run = runProgram({}, "look; close Body");
    QVERIFY2(run.status == 0, run.errors.constData());
    QCOMPARE(run.looks.size(), 1);
    QVERIFY(run.looks.at(0)["quitsOnLastWindowClosed"].toBool());
}

void tst_Program::statusIsThatOfTheEventLoop_data()
{
    QTest::addColumn<int>("status");
    QTest::newRow("0") << 0;
    QTest::newRow("1") << 1;
    QTest::newRow("77") << 77;
}

void tst_Program::statusIsThatOfTheEventLoop()
{
    QFETCH(int, status);
    QCOMPARE(runProgram({}, QStringLiteral("exit %1").arg(status)).status, status);
}

void tst_Program::openWindowKeepsTheProgramRunning_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("window");
    QTest::newRow("graphs") << "ShowDAB"
                            << "Displays";
    QTest::newRow("result map") << "ShowMap"
                                << "MapDisp";
    QTest::newRow("data map") << "ShowDMap"
                              << "DMapDisp";
}

void tst_Program::openWindowKeepsTheProgramRunning()
{
    QFETCH(QString, button);
    QFETCH(QString, window);
    const Run run =
        runProgram({}, QStringLiteral("click %1; close Body; look; look; exit 5").arg(button));
    QCOMPARE(run.looks.size(), 2);
    QCOMPARE(visibleWindows(run.windows(0)), QStringList{window});
    QCOMPARE(visibleWindows(run.windows(1)), QStringList{window});
    QCOMPARE(run.status, 5);
}

void tst_Program::windowsCloseInEitherOrder_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::newRow("the main window first") << "Body"
                                           << "Displays";
    QTest::newRow("the graphs first") << "Displays"
                                      << "Body";
}

void tst_Program::windowsCloseInEitherOrder()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    const Run run = runProgram(
        {}, QStringLiteral("click ShowDAB; close %1; look; close %2").arg(first, second));
    QVERIFY2(run.status == 0, run.errors.constData());
    QCOMPARE(run.looks.size(), 1);
    QCOMPARE(visibleWindows(run.windows()), QStringList{second});
}

QTEST_GUILESS_MAIN(tst_Program)
#include "tst_Program.moc"
