// Tests of the whole program, which runs in its own process and is inspected by the plugin
// in inspector/.

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

constexpr int timeoutMs = 60000;

/// The output of one run of the program.
struct Run {
    QJsonArray snapshots;
    int status = -1; ///< -1 if the program did not end by itself
    QByteArray output;
    QByteArray errors;

    QJsonArray windows(int snapshot = 0) const
    {
        return snapshots.at(snapshot)["windows"].toArray();
    }
};

/// Runs the program with @p arguments; the plugin executes @p steps.
Run runProgram(const QStringList& arguments, const QString& steps)
{
    const QTemporaryDir folder;
    const QString report = folder.filePath(QStringLiteral("report.json"));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("aelkinspector"));
    environment.insert(QStringLiteral("QT_PLUGIN_PATH"), QStringLiteral(AELK_PLUGINS));
    // Without this variable, Qt prints a warning about the runtime directory.
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), folder.path());
    environment.insert(QStringLiteral("AELK_INSPECTOR_STEPS"), steps);
    environment.insert(QStringLiteral("AELK_INSPECTOR_REPORT"), report);
    QProcess program;
    program.setProcessEnvironment(environment);
    program.setWorkingDirectory(folder.path());
    program.start(QStringLiteral(AELK_PROGRAM), arguments);
    Run run;
    if (program.waitForFinished(timeoutMs) && program.exitStatus() == QProcess::NormalExit) {
        run.status = program.exitCode();
    }
    program.kill(); // if it is still running after the time limit
    program.waitForFinished(timeoutMs);
    run.output = program.readAllStandardOutput();
    run.errors = program.readAllStandardError();
    run.snapshots = QJsonDocument::fromJson(readFile(report)).array();
    return run;
}

/// Takes one snapshot and ends the program with status 0.
Run snapshotAtStart(const QStringList& arguments)
{
    return runProgram(arguments, QStringLiteral("snapshot; exit 0"));
}

using Visit = std::function<void(const QJsonObject& widget)>;

/// Calls @p visit for every widget; a parent is visited before its children.
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

/// The first widget with this name; an empty object if there is none.
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

QString labelText(const QJsonArray& windows, const QString& name)
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

/// Rows for a test that runs in both languages.
void addLanguageRows()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("English") << "-e";
    QTest::newRow("Japanese") << "-j";
}

QString withNumber(const QString& text, int number)
{
    return text.arg(number);
}

/// Whether @p text is the number of an energy row: "1", as in the panel's grid, or "1:  ", as
/// in the row's own frame, which is never shown.
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

    void translationTableIsEmbeddedUnchanged();
    void argumentsChooseTheLanguage_data();
    void argumentsChooseTheLanguage();
    void englishLabelsShowTheSourceTexts();
    void japaneseLabelsShowTheTranslations();
    void untranslatedTextsShowTheirSourceInBothLanguages_data();
    void untranslatedTextsShowTheirSourceInBothLanguages();
    void fieldValuesAreTheSameInBothLanguages();

    void titleIsTheProgramName_data();
    void titleIsTheProgramName();
    void menuBarAndStatusBarExistAndAreEmpty_data();
    void menuBarAndStatusBarExistAndAreEmpty();
    void onlyTheMainWindowIsVisibleAtStart_data();
    void onlyTheMainWindowIsVisibleAtStart();
    void startPrintsNothing_data();
    void startPrintsNothing();

    void closingTheLastWindowEndsTheProgramWithStatusZero();
    void exitStatusIsTheResultOfTheEventLoop_data();
    void exitStatusIsTheResultOfTheEventLoop();
    void openWindowKeepsTheProgramRunning_data();
    void openWindowKeepsTheProgramRunning();
    void programEndsAfterWindowsCloseInEitherOrder_data();
    void programEndsAfterWindowsCloseInEitherOrder();

private:
    QString translated(const QString& context, const QString& source) const;
    QString expectedInJapanese(const QString& source) const;

    QMap<SourceText, QString> m_translations; ///< only texts with a translation
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
    m_english = snapshotAtStart({"-e"});
    m_japanese = snapshotAtStart({"-j"});
    for (const Run& run : {m_english, m_japanese}) {
        QVERIFY2(run.status == 0, run.errors.constData());
        QCOMPARE(run.snapshots.size(), 1);
    }
}

/// The translation of a text; the source text if there is no translation.
QString tst_Program::translated(const QString& context, const QString& source) const
{
    return m_translations.value({context, source}, source);
}

/// The expected Japanese text for the English @p source. It does not depend on the class that
/// shows the text: except for form titles, all classes translate a source text in the same way.
QString tst_Program::expectedInJapanese(const QString& source) const
{
    for (int n = 1; n <= 4; ++n) {
        if (source == withNumber(QStringLiteral("Ref %1"), n)) {
            return withNumber(translated(QStringLiteral("FourPs"), QStringLiteral("Ref %1")), n);
        }
    }
    for (auto context = sourceTexts.cbegin(); context != sourceTexts.cend(); ++context) {
        const QString word = translated(context.key(), source);
        if (word != source) {
            return word;
        }
    }
    return source;
}

void tst_Program::translationTableIsEmbeddedUnchanged()
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
    QTest::newRow("the last of three options wins") << QStringList{"-e", "-j", "-e"} << true;
    QTest::newRow("-E is ignored") << QStringList{"-E"} << false;
    QTest::newRow("-J is ignored") << QStringList{"-J"} << false;
    QTest::newRow("-J does not undo -e") << QStringList{"-e", "-J"} << true;
    QTest::newRow("-E does not undo -j") << QStringList{"-j", "-E"} << false;
    QTest::newRow("a file name is ignored") << QStringList{"map.dat"} << false;
    QTest::newRow("unknown words are ignored")
        << QStringList{"--help", "--version", "-x", "english", "e", ""} << false;
    QTest::newRow("unknown words around -e are ignored")
        << QStringList{"-x", "-e", "map.dat", "j"} << true;
    QTest::newRow("unknown words around -e and -j are ignored")
        << QStringList{"one", "-e", "two", "-j", "three"} << false;
    QTest::newRow("words similar to -e are ignored")
        << QStringList{"--e", "-en", "-ej", "-e=1", " -e", "-e "} << false;
}

void tst_Program::argumentsChooseTheLanguage()
{
    QFETCH(QStringList, arguments);
    QFETCH(bool, isEnglish);
    const Run run = snapshotAtStart(arguments);
    QVERIFY2(run.status == 0, run.errors.constData());
    const QJsonArray windows = run.windows();
    QCOMPARE(labelText(windows, "label_10"),
             isEnglish ? QString("Valence") : QStringLiteral("価数"));
    QCOMPARE(labelText(windows, "label_14"),
             isEnglish ? QString("Edge[eV]") : QStringLiteral("吸収端[eV]"));
    QCOMPARE(labelText(windows, "TypeNonEquiv"),
             isEnglish ? QString("Non Equiv. Meth.") : QStringLiteral("非等価法"));
    QCOMPARE(windows, isEnglish ? m_english.windows() : m_japanese.windows());
}

void tst_Program::englishLabelsShowTheSourceTexts()
{
    QSet<QString> sources{""};
    for (const SourceText& requested : requestedTexts()) {
        sources.insert(requested.second);
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
    QVERIFY(shown.contains("Amouont")); // spelled this way in the program
    QVERIFY(shown.contains("  Non Equiv. Meth."));
    QVERIFY(shown.contains("Histgram of dMut"));
}

void tst_Program::japaneseLabelsShowTheTranslations()
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
        QCOMPARE(words, expectedInJapanese(source));
        differing += words == source ? 0 : 1;
    }
    QVERIFY(differing > 150);
}

void tst_Program::untranslatedTextsShowTheirSourceInBothLanguages_data()
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

void tst_Program::untranslatedTextsShowTheirSourceInBothLanguages()
{
    QFETCH(QString, name);
    QFETCH(QString, words);
    for (const Run& run : {m_english, m_japanese}) {
        const QJsonObject widget = widgetNamed(run.windows(), name);
        QVERIFY(!widget.isEmpty());
        // A plot itself has no text, but its title label has one.
        const QJsonObject label = widget.contains("words")
                                      ? widget
                                      : widgetNamed(QJsonArray{widget}, QStringLiteral("Title"));
        QCOMPARE(label["words"].toString(), words);
    }
}

void tst_Program::fieldValuesAreTheSameInBothLanguages()
{
    const QList<QJsonObject> english = allWidgets(m_english.windows());
    const QList<QJsonObject> japanese = allWidgets(m_japanese.windows());
    for (int i = 0; i < english.size(); ++i) {
        QCOMPARE(japanese.at(i)["value"], english.at(i)["value"]);
    }
    QCOMPARE(widgetNamed(m_japanese.windows(), "EdgeE")["value"].toString(), QString("8350"));
    QCOMPARE(widgetNamed(m_japanese.windows(), "PreEEndDE")["value"].toString(), QString("-50"));
}

void tst_Program::titleIsTheProgramName_data()
{
    addLanguageRows();
}

void tst_Program::titleIsTheProgramName()
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

void tst_Program::menuBarAndStatusBarExistAndAreEmpty_data()
{
    addLanguageRows();
}

void tst_Program::menuBarAndStatusBarExistAndAreEmpty()
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

void tst_Program::onlyTheMainWindowIsVisibleAtStart_data()
{
    addLanguageRows();
}

void tst_Program::onlyTheMainWindowIsVisibleAtStart()
{
    QFETCH(QString, language);
    const Run& run = language == "-e" ? m_english : m_japanese;
    QCOMPARE(visibleWindows(run.windows()), QStringList{"Body"});
}

void tst_Program::startPrintsNothing_data()
{
    addLanguageRows();
}

void tst_Program::startPrintsNothing()
{
    QFETCH(QString, language);
    const Run& run = language == "-e" ? m_english : m_japanese;
    QCOMPARE(run.output, QByteArray());
    QByteArrayList said = run.errors.split('\n');
    said.removeAll("");
    // This line is printed by the offscreen platform, not by the program.
    said.removeAll("This plugin does not support propagateSizeHints()");
    QCOMPARE(said, QByteArrayList());
}

void tst_Program::closingTheLastWindowEndsTheProgramWithStatusZero()
{
    const Run run = runProgram({}, "snapshot; close Body");
    QVERIFY2(run.status == 0, run.errors.constData());
    QCOMPARE(run.snapshots.size(), 1);
    QVERIFY(run.snapshots.at(0)["quitsOnLastWindowClosed"].toBool());
}

void tst_Program::exitStatusIsTheResultOfTheEventLoop_data()
{
    QTest::addColumn<int>("status");
    QTest::newRow("status 0") << 0;
    QTest::newRow("status 1") << 1;
    QTest::newRow("status 77") << 77;
}

void tst_Program::exitStatusIsTheResultOfTheEventLoop()
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
    const Run run = runProgram(
        {}, QStringLiteral("click %1; close Body; snapshot; snapshot; exit 5").arg(button));
    QCOMPARE(run.snapshots.size(), 2);
    QCOMPARE(visibleWindows(run.windows(0)), QStringList{window});
    QCOMPARE(visibleWindows(run.windows(1)), QStringList{window});
    QCOMPARE(run.status, 5);
}

void tst_Program::programEndsAfterWindowsCloseInEitherOrder_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::newRow("the main window is closed first") << "Body"
                                                     << "Displays";
    QTest::newRow("the graph window is closed first") << "Displays"
                                                      << "Body";
}

void tst_Program::programEndsAfterWindowsCloseInEitherOrder()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    const Run run = runProgram(
        {}, QStringLiteral("click ShowDAB; close %1; snapshot; close %2").arg(first, second));
    QVERIFY2(run.status == 0, run.errors.constData());
    QCOMPARE(run.snapshots.size(), 1);
    QCOMPARE(visibleWindows(run.windows()), QStringList{second});
}

QTEST_GUILESS_MAIN(tst_Program)
#include "tst_Program.moc"
