// Tests of the functions for lines of text: items, fields, comments, quotes and numbers.
#include "data/TextItems.h"
#include "support/DataRows.h"
#include "support/DebugLog.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTest>

using tests::DebugLog;

class TestTextItems : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nextItemSplitsOffTheFirstItem_data();
    void nextItemSplitsOffTheFirstItem();
    void itemsAreSeparatedByRegexWhiteSpace();
    void nextItemOfALineOfBlanksReturnsAnEmptyRest();
    void adjacentQuotedItemsAreTwoItems();
    void unclosedQuoteIsReported();
    void strayQuoteAtTheLineEndIsReported();
    void strayQuoteBeforeABlankIsNotReported();
    void itemAndLineCanBeTheSameVariable();

    void splittingALineDropsEmptyItems();
    void itemsAfterAPrefixIncludeEmptyItems();
    void prefixBeforeItemsIsSkippedByLengthOnly();
    void itemsAfterAKeyMustReachTheMinimumCount_data();
    void itemsAfterAKeyMustReachTheMinimumCount();
    void lineWithoutTheKeyLeavesTheItemsUnchanged();
    void longLineIsReadInLinearTime();

    void energyListKeepsOnlyPositiveNumbers_data();
    void energyListKeepsOnlyPositiveNumbers();
    void energyListIsLogged();

    void commentStartsAtTheFirstHashOutsideQuotes_data();
    void commentStartsAtTheFirstHashOutsideQuotes();
    void lineWithoutCommentKeepsTheEarlierComment();
    void blankLinesAndCommentLinesAreRecognised_data();
    void blankLinesAndCommentLinesAreRecognised();
    void prefixComparisonIsCaseSensitive();
    void trimmedLengthIsTheLastNonBlankIndexMinusOne_data();
    void trimmedLengthIsTheLastNonBlankIndexMinusOne();

    void textWithACommaOrAQuoteIsQuoted_data();
    void textWithACommaOrAQuoteIsQuoted();
    void quotesAreEscapedWithABackslash();
    void joiningQuotedItemsReducesRepeatedBlanks();
    void commaFieldEndsAtACommaOutsideQuotes_data();
    void commaFieldEndsAtACommaOutsideQuotes();
    void fieldAfterAWordEndsAtTheDelimiter_data();
    void fieldAfterAWordEndsAtTheDelimiter();

    void backslashAtTheLineEndIsRecognisedAndRemoved_data();
    void backslashAtTheLineEndIsRecognisedAndRemoved();
    void atMostTwoTrailingBackslashesAreRemoved_data();
    void atMostTwoTrailingBackslashesAreRemoved();

    void numberChecksDistinguishRealsIntegersAndDigits_data();
    void numberChecksDistinguishRealsIntegersAndDigits();
    void paddingAddsAtMost101Blanks_data();
    void paddingAddsAtMost101Blanks();
    void blankStringHasAtMost101Blanks();
    void thousandsSeparatorsAreInsertedBeforeThePoint_data();
    void thousandsSeparatorsAreInsertedBeforeThePoint();
};

void TestTextItems::nextItemSplitsOffTheFirstItem_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("item");
    QTest::addColumn<QString>("rest");
    tests::addTexts("empty line", {"", "", ""});
    tests::addTexts("blanks only", {" \t ", "", ""});
    tests::addTexts("one item", {"abc", "abc", ""});
    tests::addTexts("rest keeps its leading blanks", {"  a   b c", "a", "   b c"});
    tests::addTexts("tab ends an item", {"a\tb", "a", "\tb"});
    tests::addTexts("line feed ends an item", {"a\nb", "a", "\nb"});
    QTest::newRow("no-break space is not a blank") << u"a\u00a0b c"_qs << u"a\u00a0b"_qs << " c";
    tests::addTexts("quoted item contains blanks", {" \"a b\" c", "a b", " c"});
    tests::addTexts("quoted item ends at its quote", {"\"a\"b", "a", "b"});
    tests::addTexts("quoted empty item before others", {"\"\" b", "", " b"});
    tests::addTexts("no escaping in quotes", {"\"a\\\"b\"", "a\\", "b\""});
    tests::addTexts("doubled quote starts a new item", {"\"a\"\"b\"", "a", "\"b\""});
    tests::addTexts("quote in the middle is kept", {"a\"b c", "a\"b", " c"});
    tests::addTexts("quote before a blank is kept", {"ab\" c", "ab\"", " c"});
    tests::addTexts("quote at the end is kept", {"a b\"", "a", " b\""});
    tests::addTexts("last item with a quote at its end", {" b\"", "b\"", ""});
    tests::addTexts("unclosed quote includes the rest", {" \"a b ", "a b ", ""});
    tests::addTexts("lone quote", {"\"", "", ""});
}

void TestTextItems::nextItemSplitsOffTheFirstItem()
{
    QFETCH(QString, line);
    const DebugLog log;
    QString item = "old";
    const QString result = data::nextItem(line, item);
    QTEST(item, "item");
    QTEST(result, "rest");
}

void TestTextItems::itemsAreSeparatedByRegexWhiteSpace()
{
    const QRegularExpression blank("\\s");
    for (char16_t c = 1; c < 0xd800; ++c) {
        const QString line = QString("a") + QChar(c) + "b";
        QString item;
        data::nextItem(line, item);
        QVERIFY2((item == "a") == QString(QChar(c)).contains(blank), qPrintable(line));
    }
}

void TestTextItems::nextItemOfALineOfBlanksReturnsAnEmptyRest()
{
    QString rest = "   ";
    QString item;
    int rounds = 0;
    while (!rest.isEmpty() && rounds < 10) {
        rest = data::nextItem(rest, item);
        ++rounds;
    }
    QCOMPARE(rounds, 1);
    QVERIFY(item.isEmpty());
}

void TestTextItems::adjacentQuotedItemsAreTwoItems()
{
    QString item;
    const QString rest = data::nextItem("\"a b\"\"c d\" e", item);
    QCOMPARE(item, "a b");
    QCOMPARE(rest, "\"c d\" e");
    QCOMPARE(data::nextItem(rest, item), " e");
    QCOMPARE(item, "c d");
}

void TestTextItems::unclosedQuoteIsReported()
{
    const DebugLog log;
    QString item;
    data::nextItem(" \"a b", item);
    QCOMPARE(log.lines(),
             QStringList("In a line [ \"a b] item is started from quote but not ended by quote"));
}

void TestTextItems::strayQuoteAtTheLineEndIsReported()
{
    const DebugLog log;
    QString item;
    data::nextItem(" ab\"", item);
    QCOMPARE(log.lines(),
             QStringList("In a line [ ab\"] item is started from not quote but ended by quote"));
}

void TestTextItems::strayQuoteBeforeABlankIsNotReported()
{
    const DebugLog log;
    QString item;
    data::nextItem(" ab\" ", item);
    QCOMPARE(item, "ab\"");
    QCOMPARE(log.lines(), QStringList());
}

void TestTextItems::itemAndLineCanBeTheSameVariable()
{
    QString line = "a b c";
    line = data::nextItem(line, line);
    QCOMPARE(line, " b c");
}

void TestTextItems::splittingALineDropsEmptyItems()
{
    QCOMPARE(data::splitItems(" a \"\" \"b c\"d  "), QStringList({"a", "b c", "d"}));
    QCOMPARE(data::splitItems("  "), QStringList());
    QCOMPARE(data::splitItems(""), QStringList());
}

void TestTextItems::itemsAfterAPrefixIncludeEmptyItems()
{
    QCOMPARE(data::splitItemsAfter("KEY a \"\" b", "KEY"), QStringList({"a", "", "b"}));
    QCOMPARE(data::splitItemsAfter("KEY a ", "KEY"), QStringList({"a", ""}));
    QCOMPARE(data::splitItemsAfter("KEY", "KEY"), QStringList());
}

void TestTextItems::prefixBeforeItemsIsSkippedByLengthOnly()
{
    QCOMPARE(data::splitItemsAfter("abcd e", "xyz"), QStringList({"d", "e"}));
    QCOMPARE(data::splitItemsAfter("ab", "xyz"), QStringList());
}

void TestTextItems::itemsAfterAKeyMustReachTheMinimumCount_data()
{
    QTest::addColumn<int>("minCount");
    QTest::addColumn<bool>("enough");
    QTest::newRow("fewer required") << 2 << true;
    QTest::newRow("all required, with the empty item") << 3 << true;
    QTest::newRow("more required") << 4 << false;
}

void TestTextItems::itemsAfterAKeyMustReachTheMinimumCount()
{
    QFETCH(int, minCount);
    QStringList items = {"old"};
    const bool result = data::itemsAfterKey("KEY: 1 \"\" 2", items, minCount, "KEY:");
    QTEST(result, "enough");
    QCOMPARE(items, QStringList({"1", "", "2"}));
}

void TestTextItems::lineWithoutTheKeyLeavesTheItemsUnchanged()
{
    QStringList items = {"old"};
    QVERIFY(!data::itemsAfterKey("key: 1", items, 0, "KEY:"));
    QCOMPARE(items, QStringList("old"));
}

void TestTextItems::longLineIsReadInLinearTime()
{
    const DebugLog log;
    const QString line = QString("0 ").repeated(1'000'000);
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(data::splitItems(line).size(), 1'000'000);
    QCOMPARE(data::energiesOfList(line, 8), QList<QString>());
    data::withThousands(QString(2'000'000, '1'));
    QVERIFY2(timer.elapsed() < 30'000, "a pass for every item takes far longer");
}

void TestTextItems::energyListKeepsOnlyPositiveNumbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("rows");
    QTest::addColumn<QStringList>("energies");
    QTest::newRow("blanks") << "8330 8340.5" << 8 << QStringList({"8330", "8340.5"});
    QTest::newRow("commas and blanks mixed")
        << ", 8330 ,, 8340.5,8350 " << 8 << QStringList({"8330", "8340.5", "8350"});
    QTest::newRow("items are not reformatted")
        << "08330.00 8.34e3 +1" << 8 << QStringList({"08330.00", "8.34e3", "+1"});
    QTest::newRow("items not above zero are skipped")
        << "0 -1 0.0 8330 x nan 1e-300" << 8 << QStringList({"8330", "1e-300"});
    QTest::newRow("skipped items do not use a row")
        << "x 1 y 2 z 3" << 2 << QStringList({"1", "2"});
    QTest::newRow("more energies than rows") << "1 2 3" << 2 << QStringList({"1", "2"});
    QTest::newRow("no rows") << "1 2 3" << 0 << QStringList();
    QTest::newRow("quotes are removed") << "\"8330\" 8340" << 8 << QStringList({"8330", "8340"});
    QTest::newRow("comma in quotes becomes a blank") << "\"1,2\" 3" << 8 << QStringList("3");
    QTest::newRow("quoted empty item") << "\"\" 3" << 8 << QStringList("3");
    QTest::newRow("blank outside ASCII") << u"1\u30002"_qs << 8 << QStringList({"1", "2"});
    QTest::newRow("empty") << "" << 8 << QStringList();
    QTest::newRow("commas only") << ",, ," << 8 << QStringList();
}

void TestTextItems::energyListKeepsOnlyPositiveNumbers()
{
    QFETCH(QString, text);
    QFETCH(int, rows);
    const DebugLog log;
    const QStringList result = data::energiesOfList(text, rows);
    QTEST(result, "energies");
}

void TestTextItems::energyListIsLogged()
{
    const DebugLog log;
    data::energiesOfList(" 1,2,,  x ", 8);
    QCOMPARE(log.lines(), QStringList("1 2 x"));
}

void TestTextItems::commentStartsAtTheFirstHashOutsideQuotes_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("comment");
    tests::addTexts("mark in the middle", {"a # b # c", "a ", " b # c"});
    tests::addTexts("mark at the start", {"#b", "", "b"});
    tests::addTexts("mark at the end", {"a#", "a", ""});
    tests::addTexts("double quotes hide a mark", {"\"a#b\" #c", "\"a#b\" ", "c"});
    tests::addTexts("single quotes hide a mark", {"'a#b' #c", "'a#b' ", "c"});
    tests::addTexts("a single quote closes a double quote", {"\"a' #c", "\"a' ", "c"});
    tests::addTexts("apostrophe within double quotes closes", {"\"a'#b\"", "\"a'", "b\""});
    tests::addTexts("open quote hides the rest", {"it's #c", "it's #c", "untouched"});
    tests::addTexts("no mark", {"abc", "abc", "untouched"});
}

void TestTextItems::commentStartsAtTheFirstHashOutsideQuotes()
{
    QFETCH(QString, line);
    QString foundComment = "untouched";
    const QString result = data::stripComment(line, foundComment);
    QTEST(result, "text");
    QTEST(foundComment, "comment");
}

void TestTextItems::lineWithoutCommentKeepsTheEarlierComment()
{
    QString comment = "of an earlier line";
    QCOMPARE(data::stripComment("a", comment), "a");
    QCOMPARE(comment, "of an earlier line");
}

void TestTextItems::blankLinesAndCommentLinesAreRecognised_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<bool>("expected");
    QTest::newRow("empty") << "" << true;
    QTest::newRow("blanks") << " \t" << true;
    QTest::newRow("comment") << "  # a" << true;
    QTest::newRow("text") << "a # b" << false;
    QTest::newRow("mark in quotes") << "'#'" << false;
}

void TestTextItems::blankLinesAndCommentLinesAreRecognised()
{
    QFETCH(QString, line);
    const bool result = data::isBlankOrComment(line);
    QTEST(result, "expected");
}

void TestTextItems::prefixComparisonIsCaseSensitive()
{
    QVERIFY(data::startsWithText("2dData-V0", "2dData"));
    QVERIFY(data::startsWithText("2dData", "2dData"));
    QVERIFY(data::startsWithText("2dData", ""));
    QVERIFY(!data::startsWithText("2DData", "2dData"));
    QVERIFY(!data::startsWithText("2dDat", "2dData"));
    QVERIFY(!data::startsWithText(" 2dData", "2dData"));
}

void TestTextItems::trimmedLengthIsTheLastNonBlankIndexMinusOne_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("expected");
    // If the last character that is not a blank has the index i in the whole line, the result
    // is the text without its leading blanks, cut to i - 1 characters.
    tests::addTexts("no leading blank, i = 5", {"abcdef", "abcd"});
    tests::addTexts("one leading blank, i = 6", {" abcdef", "abcde"});
    tests::addTexts("two leading blanks, i = 7", {"  abcdef", "abcdef"});
    tests::addTexts("trailing blanks are not counted, i = 2", {"abc   ", "a"});
    tests::addTexts("trailing blanks stay within the length, i = 6", {"    abc   ", "abc  "});
    tests::addTexts("inner blanks stay, i = 6", {"a b c d", "a b c"});
    tests::addTexts("two characters, i = 1", {"ab", ""});
    tests::addTexts("one character, i = 0", {"a", ""});
    tests::addTexts("blanks only", {"   ", ""});
    tests::addTexts("empty", {"", ""});
}

void TestTextItems::trimmedLengthIsTheLastNonBlankIndexMinusOne()
{
    QFETCH(QString, line);
    const QString result = data::trimmed(line);
    QTEST(result, "expected");
}

void TestTextItems::textWithACommaOrAQuoteIsQuoted_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    tests::addTexts("plain text is unchanged", {"a b", "a b"});
    tests::addTexts("comma needs quotes", {"a,b", "\"a,b\""});
    tests::addTexts("quote is doubled and needs quotes", {"a\"b", "\"a\"\"b\""});
    tests::addTexts("comma and quotes", {"\"a\",b", "\"\"\"a\"\",b\""});
    tests::addTexts("empty text is unchanged", {"", ""});
}

void TestTextItems::textWithACommaOrAQuoteIsQuoted()
{
    QFETCH(QString, text);
    const QString result = data::quotedIfNeeded(text);
    QTEST(result, "expected");
    QString field;
    QCOMPARE(data::commaField(result + ",next", field), "next");
    QCOMPARE(field, text);
}

void TestTextItems::quotesAreEscapedWithABackslash()
{
    QCOMPARE(data::quoteEscaped("a\"b\""), "a\\\"b\\\"");
    QCOMPARE(data::quoteEscaped("a\\b"), "a\\b");
    QCOMPARE(data::quoted("a\"b"), "\"a\\\"b\"");
    QCOMPARE(data::quoted(""), "\"\"");
    QCOMPARE(data::commaQuoted("a\"b"), ",\"a\\\"b\"");
}

void TestTextItems::joiningQuotedItemsReducesRepeatedBlanks()
{
    QCOMPARE(data::joinQuoted({"a", "b  c", ""}), "\"a\" \"b c\" \"\"");
    QCOMPARE(data::joinQuoted({" a\"b "}), "\" a\"b \"");
    QCOMPARE(data::joinQuoted({}), "");
}

void TestTextItems::commaFieldEndsAtACommaOutsideQuotes_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("strictField");
    QTest::addColumn<QString>("strictRest");
    QTest::addColumn<QString>("looseField");
    QTest::addColumn<QString>("looseRest");
    tests::addTexts("plain", {"a b,c,d", "a b", "c,d", "a b", "c,d"});
    tests::addTexts("last field", {"a", "a", "", "a", ""});
    tests::addTexts("comma at the end", {"a,", "a", "", "a", ""});
    tests::addTexts("empty field", {",b", "", "b", "", "b"});
    tests::addTexts("empty line", {"", "", "", "", ""});
    tests::addTexts("comma in quotes", {"\"a,b\",c", "a,b", "c", "a,b", "c"});
    tests::addTexts("doubled quote", {"\"a\"\"b\",c", "a\"b", "c", "a\"b", "c"});
    tests::addTexts("quoted empty field", {"\"\",c", "", "c", "", "c"});
    tests::addTexts("only a doubled quote", {"\"\"\"\",c", "\"", "c", "\"", "c"});
    tests::addTexts("unclosed quote", {"\"a,b", "a,b", "", "a,b", ""});
    tests::addTexts("text after the closing quote", {"\"a\"b,c", "ab", "c", "ab", "c"});
    tests::addTexts("quotes within the field", {"a\"b,c\"d,e", "a\"b", "c\"d,e", "ab,cd", "e"});
    tests::addTexts("quotes opened twice", {"\"a,\"b\"c,\",d", "a,b\"c", "\",d", "a,bc,", "d"});
    tests::addTexts("blank before the quote", {" \"a\",b", " \"a\"", "b", " a", "b"});
}

void TestTextItems::commaFieldEndsAtACommaOutsideQuotes()
{
    QFETCH(QString, line);
    QString strict = "old";
    const QString strictResult = data::commaField(line, strict);
    QTEST(strict, "strictField");
    QTEST(strictResult, "strictRest");
    QString loose = "old";
    const QString looseResult = data::commaFieldLoose(line, loose);
    QTEST(loose, "looseField");
    QTEST(looseResult, "looseRest");
}

void TestTextItems::fieldAfterAWordEndsAtTheDelimiter_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    tests::addTexts("up to the delimiter", {"x KEY=a b;c", "a b"});
    tests::addTexts("up to the end", {"x KEY=a b", "a b"});
    tests::addTexts("leading delimiters are dropped", {"KEY=;;a;b", "a"});
    tests::addTexts("delimiters only", {"KEY=;;", ""});
    tests::addTexts("nothing after the word", {"KEY=", ""});
    tests::addTexts("no such word", {"key=a", ""});
    tests::addTexts("first match wins", {"KEY=a;KEY=b", "a"});
}

void TestTextItems::fieldAfterAWordEndsAtTheDelimiter()
{
    QFETCH(QString, text);
    const QString result = data::fieldAfter(text, "KEY=", ';');
    QTEST(result, "expected");
}

void TestTextItems::backslashAtTheLineEndIsRecognisedAndRemoved_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<bool>("marked");
    QTest::addColumn<QString>("shortened");
    QTest::newRow("mark at the end") << "a b\\" << true << "a b";
    QTest::newRow("blanks after the mark") << "a \\ \t" << true << "a ";
    QTest::newRow("mark alone") << "\\" << true << "";
    QTest::newRow("one of two marks is removed") << "a\\\\" << true << "a\\";
    QTest::newRow("mark inside") << "a\\b" << false << "a\\b";
    QTest::newRow("no mark keeps its blanks") << "a  " << false << "a  ";
    QTest::newRow("blanks only") << "  " << false << "  ";
    QTest::newRow("empty") << "" << false << "";
}

void TestTextItems::backslashAtTheLineEndIsRecognisedAndRemoved()
{
    QFETCH(QString, line);
    const bool result = data::endsWithBackslash(line);
    QTEST(result, "marked");
    QTEST(line, "shortened");
}

void TestTextItems::atMostTwoTrailingBackslashesAreRemoved_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("expected");
    tests::addTexts("none", {"a ", "a "});
    tests::addTexts("one", {"a \\", "a "});
    tests::addTexts("two", {"a\\ \\ ", "a"});
    tests::addTexts("three", {"a\\\\\\", "a\\"});
}

void TestTextItems::atMostTwoTrailingBackslashesAreRemoved()
{
    QFETCH(QString, line);
    const QString result = data::dropBackslash(line);
    QTEST(result, "expected");
}

void TestTextItems::numberChecksDistinguishRealsIntegersAndDigits_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("real");
    QTest::addColumn<bool>("integer");
    QTest::addColumn<bool>("digits");
    QTest::newRow("digits") << "0129" << true << true << true;
    QTest::newRow("blanks around") << " 12 " << true << true << true;
    QTest::newRow("blank within") << "1 2" << false << false << false;
    QTest::newRow("plus") << "+12" << true << true << false;
    QTest::newRow("minus") << "-12" << true << true << false;
    QTest::newRow("sign alone") << "-" << true << true << false;
    QTest::newRow("two signs") << "+-1" << false << false << false;
    QTest::newRow("sign at the end") << "1-" << false << false << false;
    QTest::newRow("point within") << "1.5" << true << false << false;
    QTest::newRow("point first") << ".5" << true << false << false;
    QTest::newRow("point last") << "5." << true << false << false;
    QTest::newRow("point alone") << "." << true << false << false;
    QTest::newRow("sign and point") << "-.5" << true << false << false;
    QTest::newRow("two points") << "1.5." << false << false << false;
    QTest::newRow("two points, one first") << ".5." << false << false << false;
    QTest::newRow("exponent") << "1e5" << false << false << false;
    QTest::newRow("word") << "nan" << false << false << false;
    QTest::newRow("empty") << "" << false << false << false;
    QTest::newRow("blanks only") << "  " << false << false << false;
    QTest::newRow("full-width digits") << u"\uff11\uff12"_qs << true << true << true;
    QTest::newRow("a number that is not a digit") << u"\u00bd"_qs << true << true << true;
    QTest::newRow("a letter outside ASCII") << u"\u00e9"_qs << false << false << false;
}

void TestTextItems::numberChecksDistinguishRealsIntegersAndDigits()
{
    QFETCH(QString, text);
    const bool isReal = data::isRealNumber(text);
    QTEST(isReal, "real");
    const bool isInteger = data::isInteger(text);
    QTEST(isInteger, "integer");
    const bool isDigits = data::isDigits(text);
    QTEST(isDigits, "digits");
}

void TestTextItems::paddingAddsAtMost101Blanks_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("length");
    QTest::addColumn<QString>("expected");
    QTest::newRow("padded") << "ab" << 4 << "ab  ";
    QTest::newRow("exact") << "ab" << 2 << "ab";
    QTest::newRow("never cut") << "abc" << 2 << "abc";
    QTest::newRow("negative") << "ab" << -5 << "ab";
    QTest::newRow("101 are added") << "ab" << 103 << "ab" + QString(101, ' ');
    QTest::newRow("102 are limited to 101") << "ab" << 104 << "ab" + QString(101, ' ');
    QTest::newRow("smallest int") << "ab" << std::numeric_limits<int>::min() << "ab";
    QTest::newRow("largest int") << "ab" << std::numeric_limits<int>::max()
                                 << "ab" + QString(101, ' ');
}

void TestTextItems::paddingAddsAtMost101Blanks()
{
    QFETCH(QString, text);
    QFETCH(int, length);
    const QString result = data::padded(text, length);
    QTEST(result, "expected");
}

void TestTextItems::blankStringHasAtMost101Blanks()
{
    QCOMPARE(data::blanks(0), "");
    QCOMPARE(data::blanks(-1), "");
    QCOMPARE(data::blanks(3), "   ");
    QCOMPARE(data::blanks(101), QString(101, ' '));
    QCOMPARE(data::blanks(102), QString(101, ' '));
}

void TestTextItems::thousandsSeparatorsAreInsertedBeforeThePoint_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("expected");
    tests::addTexts("three digits", {"123", "123"});
    tests::addTexts("four digits", {"1234", "1,234"});
    tests::addTexts("six digits", {"123456", "123,456"});
    tests::addTexts("seven digits", {"1234567", "1,234,567"});
    tests::addTexts("point", {"1234.5678", "1,234.5678"});
    tests::addTexts("point first", {".5678", ".5678"});
    tests::addTexts("only the first point counts", {"1234.5678.9", "1,234.5678.9"});
    tests::addTexts("a sign counts as a digit", {"-123", "-,123"});
    tests::addTexts("empty", {"", ""});
}

void TestTextItems::thousandsSeparatorsAreInsertedBeforeThePoint()
{
    QFETCH(QString, number);
    const QString result = data::withThousands(number);
    QTEST(result, "expected");
}

QTEST_GUILESS_MAIN(TestTextItems)
#include "tst_TextItems.moc"
