// Tests of the embedded Japanese translation table: its bytes, its contents, and lookups
// through Qt.

#include "app/Language.h"
#include "support/QmReader.h"
#include "support/TestFiles.h"
#include "support/Vocabulary.h"

#include <QDir>
#include <QResource>
#include <QStringConverter>
#include <QTest>
#include <QTranslator>

#include <algorithm>

using namespace tests;

namespace
{

const QString tablePath = QStringLiteral(":/qelk_ja_JP.qm");

/// The number of occurrences of each placeholder "%1" to "%9".
QList<qsizetype> placeholders(const QString& text)
{
    QList<qsizetype> counts;
    for (int n = 1; n <= 9; ++n) {
        counts.append(text.count(QStringLiteral("%%1").arg(n)));
    }
    return counts;
}

qsizetype leadingBlanks(const QString& text)
{
    return std::find_if(text.cbegin(), text.cend(), [](QChar c) { return c != u' '; }) -
           text.cbegin();
}

/// The colons and spaces at the end of a text. The program appends a value to such a text.
QString ending(const QString& text)
{
    qsizetype begin = text.size();
    while (begin > 0 && (text.at(begin - 1) == u' ' || text.at(begin - 1) == u':')) {
        --begin;
    }
    return text.mid(begin);
}

/// Whether @p c may occur in a Japanese text of this program: printable ASCII, the Greek
/// letters of the quantities, Japanese punctuation, full-width hiragana and katakana,
/// common ideographs.
bool isJapaneseText(QChar c)
{
    const char16_t code = c.unicode();
    const auto between = [code](char16_t first, char16_t last) {
        return first <= code && code <= last;
    };
    return between(0x20, 0x7e) || code == u'μ' || code == u'Δ' || between(0x3001, 0x300f) ||
           between(0x3041, 0x3093) || between(0x30a1, 0x30f6) || between(0x30fb, 0x30fc) ||
           between(0x4e00, 0x9fff);
}

/// Simplified and some traditional Chinese forms of the Japanese characters 線 価 範 囲 図 選 択 様
/// 測 結 無 対 計 詳 細 開 記 録 値 数 処 関 軸 験 権 試 設 顕 辺 際 積 総.
const QString chineseForms = QStringLiteral(
    "线價价范围圖图选擇择樣样测结无對对计详细开记录值數處处關关轴驗验权试设显邊边际积总");

/// Whether Shift_JIS can encode the whole text; also true if Qt has no Shift_JIS codec.
bool isInShiftJis(const QString& text)
{
    QStringEncoder encode("Shift_JIS");
    QStringDecoder decode("Shift_JIS");
    if (!encode.isValid() || !decode.isValid()) {
        return true;
    }
    const QByteArray coded = encode(text);
    return QString(decode(coded)) == text;
}

} // namespace

class tst_TextTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void tableIsTheOnlyFileInTheResourceRoot();
    void tableIsEmbeddedUncompressed();
    void resourceHasFormatVersion3();

    void fileBeginsWithTheMagicNumber();
    void fileHasOnlyHashesAndMessages();
    void everyMessageHasTheCorrectHash();
    void hashesAreSortedForBinarySearch();
    void truncatedFileNeverReadsAsComplete();
    void overwrittenByteDoesNotAddMessages();

    void tableHas173Messages();
    void contextsHaveTheExpectedMessageCounts_data();
    void contextsHaveTheExpectedMessageCounts();
    void contextsHaveTheExpectedSources_data();
    void contextsHaveTheExpectedSources();
    void noMessageIsDuplicated();
    void noMessageHasACommentOrSeveralTranslations();

    void everyMessageCanBeLookedUp_data();
    void everyMessageCanBeLookedUp();
    void textWithoutTranslationShowsItsSource();
    void textMissingFromTheTableShowsItsSource();
    void messageFromAnotherContextIsNotUsed();

    void numbersAndBarePlaceholdersHaveNoTranslation();
    void labelsOfPlotFramesHaveNoTranslation();
    void allButInternationalTextsAreTranslated();

    void translationsKeepThePlaceholdersOfTheirSources();
    void translationsKeepTheLeadingBlanksOfTheirSources();
    void translationsKeepTheEndingsOfTheirSources();
    void translationsKeepTheSeparatorsBeforeNumbers();
    void termsOfTheMethodAreTranslated_data();
    void termsOfTheMethodAreTranslated();
    void equalSourcesHaveEqualTranslations();
    void translationsUseOnlyJapaneseCharacters();

private:
    QByteArray m_file;
    QmTable m_table;
};

void tst_TextTable::initTestCase()
{
    m_file = readFile(tablePath);
    const std::optional<QmTable> table = readQm(m_file);
    QVERIFY2(table, "the table is missing or damaged");
    m_table = *table;
}

void tst_TextTable::tableIsTheOnlyFileInTheResourceRoot()
{
    // Qt's own resources are in folders below the root, so they are not listed.
    QCOMPARE(QDir(QStringLiteral(":/")).entryList(QDir::Files), QStringList{"qelk_ja_JP.qm"});
}

void tst_TextTable::tableIsEmbeddedUncompressed()
{
    const QResource resource(tablePath);
    QVERIFY(resource.isValid());
    QCOMPARE(resource.compressionAlgorithm(), QResource::NoCompression);
    QCOMPARE(resource.size(), qint64(m_file.size()));
}

void tst_TextTable::resourceHasFormatVersion3()
{
    const QString list = QString::fromUtf8(readFile(QStringLiteral(AELK_RESOURCE)));
    QVERIFY(list.contains(QLatin1String("qRegisterResourceData")));
    // The version occurs twice: in the function that registers the resource and in the function
    // that unregisters it.
    QCOMPARE(list.count(QLatin1String("int version = ")), 2);
    QCOMPARE(list.count(QLatin1String("int version = 3;")), 2);
}

void tst_TextTable::fileBeginsWithTheMagicNumber()
{
    QCOMPARE(m_file.first(16).toHex(), QByteArray("3cb86418caef9c95cd211cbf60a1bddd"));
}

void tst_TextTable::fileHasOnlyHashesAndMessages()
{
    QCOMPARE(m_table.sections, (QList<int>{QmHashes, QmMessages}));
}

void tst_TextTable::everyMessageHasTheCorrectHash()
{
    QCOMPARE(m_table.hashes.size(), 173);
    QMap<quint32, quint32> hashAt;
    for (const QmHash& hash : m_table.hashes) {
        QVERIFY(!hashAt.contains(hash.place));
        hashAt.insert(hash.place, hash.hash);
    }
    for (const QmMessage& message : m_table.messages) {
        QCOMPARE(hashAt.value(message.place), qmHash(message.source + message.comment));
    }
}

void tst_TextTable::hashesAreSortedForBinarySearch()
{
    const auto isLess = [](const QmHash& a, const QmHash& b) { return a.hash < b.hash; };
    QVERIFY(std::is_sorted(m_table.hashes.cbegin(), m_table.hashes.cend(), isLess));
}

void tst_TextTable::truncatedFileNeverReadsAsComplete()
{
    for (qsizetype size = 0; size < m_file.size(); ++size) {
        const std::optional<QmTable> table = readQm(QByteArrayView(m_file).first(size));
        // A file that is truncated between two sections is valid, but has fewer sections.
        QVERIFY(!table || table->sections.size() < m_table.sections.size());
    }
}

void tst_TextTable::overwrittenByteDoesNotAddMessages()
{
    // A byte overwritten with 255 can make a length huge or a tag unknown. The reader must not
    // return more messages than the intact file has.
    for (qsizetype at = 16; at < m_file.size(); at += 3) {
        QByteArray damaged = m_file;
        damaged[at] = '\xff';
        const std::optional<QmTable> table = readQm(damaged);
        QVERIFY(!table || table->messages.size() <= m_table.messages.size());
    }
}

void tst_TextTable::tableHas173Messages()
{
    QCOMPARE(m_table.messages.size(), 173);
}

void tst_TextTable::contextsHaveTheExpectedMessageCounts_data()
{
    QTest::addColumn<int>("messages");
    QTest::newRow("FourPs") << 118;
    QTest::newRow("Displays") << 12;
    QTest::newRow("AEPoint") << 9;
    QTest::newRow("ARefFile") << 7;
    QTest::newRow("DispABase") << 7;
    QTest::newRow("AFileSelect") << 6;
    QTest::newRow("DispMBase") << 6;
    QTest::newRow("AXafsFileSelect") << 4;
    QTest::newRow("Body") << 1;
    QTest::newRow("DispArea") << 1;
    QTest::newRow("PopBase") << 1;
    QTest::newRow("cBar") << 1;
}

void tst_TextTable::contextsHaveTheExpectedMessageCounts()
{
    QFETCH(int, messages);
    const auto isOfContext = [](const QmMessage& message) {
        return message.context == QTest::currentDataTag();
    };
    QCOMPARE(std::count_if(m_table.messages.cbegin(), m_table.messages.cend(), isOfContext),
             messages);
}

void tst_TextTable::contextsHaveTheExpectedSources_data()
{
    QTest::addColumn<QStringList>("expected");
    for (auto context = sourceTexts.cbegin(); context != sourceTexts.cend(); ++context) {
        QTest::newRow(qPrintable(context.key())) << context.value();
    }
}

void tst_TextTable::contextsHaveTheExpectedSources()
{
    QFETCH(QStringList, expected);
    QStringList sources;
    for (const QmMessage& message : std::as_const(m_table.messages)) {
        if (message.context == QTest::currentDataTag()) {
            sources << QString::fromUtf8(message.source);
        }
    }
    sources.sort();
    expected.sort();
    QCOMPARE(sources, expected);
}

void tst_TextTable::noMessageIsDuplicated()
{
    QSet<SourceText> words;
    for (const QmMessage& message : std::as_const(m_table.messages)) {
        const SourceText word{QString::fromUtf8(message.context),
                              QString::fromUtf8(message.source)};
        QVERIFY2(!words.contains(word), message.source.constData());
        words.insert(word);
    }
    QCOMPARE(surplus(words, allTexts()), QStringList());
    QCOMPARE(surplus(allTexts(), words), QStringList());
}

void tst_TextTable::noMessageHasACommentOrSeveralTranslations()
{
    for (const QmMessage& message : std::as_const(m_table.messages)) {
        QCOMPARE(message.comment, QByteArray());
        QVERIFY2(message.translations <= 1, message.source.constData());
    }
}

void tst_TextTable::everyMessageCanBeLookedUp_data()
{
    QTest::addColumn<QmMessage>("message");
    for (const QmMessage& message : std::as_const(m_table.messages)) {
        QTest::addRow("%s: %s", message.context.constData(), message.source.constData()) << message;
    }
}

void tst_TextTable::everyMessageCanBeLookedUp()
{
    QFETCH(QmMessage, message);
    QTranslator translator;
    app::installLanguage(app::Language::Japanese, translator);
    QVERIFY(!translator.isEmpty());
    const QString shown =
        QCoreApplication::translate(message.context.constData(), message.source.constData());
    QCOMPARE(shown, message.translation.isEmpty() ? QString::fromUtf8(message.source)
                                                  : message.translation);
}

void tst_TextTable::textWithoutTranslationShowsItsSource()
{
    QTranslator translator;
    app::installLanguage(app::Language::Japanese, translator);
    QCOMPARE(QCoreApplication::translate("FourPs", "8350"), QString("8350"));
    QCOMPARE(QCoreApplication::translate("DispABase", " x:"), QString(" x:"));
    QCOMPARE(QCoreApplication::translate("DispABase", "P/D"), QString("P/D"));
    QCOMPARE(QCoreApplication::translate("ARefFile", "1"), QString("1"));
    QCOMPARE(QCoreApplication::translate("PopBase", "Frame"), QString("Frame"));
}

void tst_TextTable::textMissingFromTheTableShowsItsSource()
{
    QTranslator translator;
    app::installLanguage(app::Language::Japanese, translator);
    for (const SourceText& requested : textsMissingInTable) {
        QCOMPARE(
            QCoreApplication::translate(qPrintable(requested.first), qPrintable(requested.second)),
            requested.second);
    }
}

void tst_TextTable::messageFromAnotherContextIsNotUsed()
{
    QTranslator translator;
    app::installLanguage(app::Language::Japanese, translator);
    QVERIFY(!translator.translate("FourPs", "Valence").isEmpty());
    QVERIFY(translator.translate("Displays", "Valence").isEmpty());
    QVERIFY(translator.translate("", "Valence").isEmpty());
}

void tst_TextTable::numbersAndBarePlaceholdersHaveNoTranslation()
{
    int count = 0;
    for (const QmMessage& message : std::as_const(m_table.messages)) {
        bool isNumber = false;
        message.source.toDouble(&isNumber);
        if (isNumber || message.source == "%1") {
            QVERIFY2(message.translation.isEmpty(), message.source.constData());
            ++count;
        }
    }
    QCOMPARE(count, 11); // eight numbers on the panel, "%1", and one number in each of two rows
}

void tst_TextTable::labelsOfPlotFramesHaveNoTranslation()
{
    for (const QmMessage& message : std::as_const(m_table.messages)) {
        QVERIFY2(message.context != "DispABase" || message.translation.isEmpty(),
                 message.source.constData());
    }
}

void tst_TextTable::allButInternationalTextsAreTranslated()
{
    // Numbers, "%1" and the labels of plot frames are not listed. The listed texts are default
    // texts of form widgets ("Frame", "TextLabel"), units, symbols, and abbreviations that are
    // also used in Japanese.
    const QSet<QString> international{"Frame",     "C1",   "C2",   "LCF",  "M2",
                                      "M3",        "No.",  "[eV]", "No. ", "M2/M3",
                                      "TextLabel", "  x:", "  y:", "P/D",  "dE[eV]"};
    for (const QmMessage& message : std::as_const(m_table.messages)) {
        bool isNumber = false;
        message.source.toDouble(&isNumber);
        const bool mayBeEmpty = isNumber || message.source == "%1" ||
                                message.context == "DispABase" ||
                                international.contains(QString::fromUtf8(message.source));
        QVERIFY2(mayBeEmpty || !message.translation.isEmpty(), message.source.constData());
    }
}

void tst_TextTable::translationsKeepThePlaceholdersOfTheirSources()
{
    for (const QmMessage& message : std::as_const(m_table.messages)) {
        if (!message.translation.isEmpty()) {
            QVERIFY2(placeholders(message.translation) ==
                         placeholders(QString::fromUtf8(message.source)),
                     message.source.constData());
        }
    }
}

void tst_TextTable::translationsKeepTheLeadingBlanksOfTheirSources()
{
    for (const QmMessage& message : std::as_const(m_table.messages)) {
        if (!message.translation.isEmpty()) {
            QVERIFY2(leadingBlanks(message.translation) ==
                         leadingBlanks(QString::fromUtf8(message.source)),
                     message.source.constData());
        }
    }
}

void tst_TextTable::translationsKeepTheEndingsOfTheirSources()
{
    QCOMPARE(ending(QStringLiteral("Result of LCF :: ")), QString(" :: "));
    for (const QmMessage& message : std::as_const(m_table.messages)) {
        if (!message.translation.isEmpty()) {
            QVERIFY2(ending(message.translation) == ending(QString::fromUtf8(message.source)),
                     message.source.constData());
        }
    }
}

void tst_TextTable::translationsKeepTheSeparatorsBeforeNumbers()
{
    // A translation must contain an assignment such as " = %1" exactly if its source does, and
    // begin with a comma exactly if its source does, because such a text follows a number.
    for (const QmMessage& message : std::as_const(m_table.messages)) {
        if (message.translation.isEmpty()) {
            continue;
        }
        QCOMPARE(message.translation.startsWith(QLatin1String(", ")),
                 message.source.startsWith(", "));
        for (int n = 1; n <= 3; ++n) {
            const QString assignment = QStringLiteral(" = %%1").arg(n);
            QCOMPARE(message.translation.contains(assignment),
                     message.source.contains(assignment.toUtf8()));
        }
    }
}

void tst_TextTable::termsOfTheMethodAreTranslated_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("term");
    QTest::newRow("valence") << "Valence" << QStringLiteral("価数");
    QTest::newRow("edge") << "Edge[eV]" << QStringLiteral("吸収端");
    QTest::newRow("reference") << "Ref %1" << QStringLiteral("参照");
    QTest::newRow("linear combination fit")
        << "Result of LCF :: " << QStringLiteral("線形結合フィット");
    QTest::newRow("non-equivalent method") << "Non Equiv. Meth." << QStringLiteral("非等価法");
    QTest::newRow("non-equivalent method, heading")
        << "  Non Equiv. Meth." << QStringLiteral("非等価法");
    QTest::newRow("non-equivalent method, result")
        << "Result of NEQ :: " << QStringLiteral("非等価法");
}

void tst_TextTable::termsOfTheMethodAreTranslated()
{
    QFETCH(QString, source);
    QFETCH(QString, term);
    QTranslator translator;
    app::installLanguage(app::Language::Japanese, translator);
    const QString shown = QCoreApplication::translate("FourPs", qPrintable(source));
    QVERIFY2(shown.contains(term), qPrintable(shown));
}

void tst_TextTable::equalSourcesHaveEqualTranslations()
{
    // All classes must translate a source text in the same way; only window titles differ.
    QMap<QByteArray, QString> translations;
    for (const QmMessage& message : std::as_const(m_table.messages)) {
        if (message.source == "Frame") {
            continue;
        }
        const QString before = translations.value(message.source, message.translation);
        QVERIFY2(before == message.translation, message.source.constData());
        translations.insert(message.source, message.translation);
    }
}

void tst_TextTable::translationsUseOnlyJapaneseCharacters()
{
    QVERIFY(isInShiftJis(QStringLiteral("表示選択")));
    for (const QmMessage& message : std::as_const(m_table.messages)) {
        QVERIFY2(isInShiftJis(message.translation), message.source.constData());
        for (const QChar c : message.translation) {
            const QString description = QStringLiteral("U+%1 in the text of \"%2\"")
                                            .arg(ushort(c.unicode()), 4, 16, QLatin1Char('0'))
                                            .arg(QString::fromUtf8(message.source));
            QVERIFY2(isJapaneseText(c), qPrintable(description));
            QVERIFY2(!chineseForms.contains(c), qPrintable(description));
        }
    }
}

QTEST_GUILESS_MAIN(tst_TextTable)
#include "tst_TextTable.moc"
