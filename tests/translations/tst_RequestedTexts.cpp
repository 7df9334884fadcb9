// Tests that the translation table and the sources contain the same texts, except for a few
// known texts.

#include "support/QmReader.h"
#include "support/TestFiles.h"
#include "support/Vocabulary.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

using namespace tests;

namespace
{

/// The pairs of class and text in a .ts file; empty if it cannot be read or parsed.
QSet<SourceText> readTs(const QString& path)
{
    QSet<SourceText> texts;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return texts;
    }
    QXmlStreamReader xml(&file);
    QString context;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        if (xml.name() == QLatin1String("name")) {
            context = xml.readElementText();
        } else if (xml.name() == QLatin1String("source")) {
            texts.insert({context, xml.readElementText()});
        }
    }
    return xml.hasError() ? QSet<SourceText>() : texts;
}

} // namespace

class tst_RequestedTexts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void onlyTheListedSourceTextsAreMissingFromTheTable();
    void onlyTheListedUnusedTextsAreMissingFromTheSources();
    void sourcesAndVocabularyHaveTheSameTexts();

private:
    QSet<SourceText> m_inSources;
    QSet<SourceText> m_inTable;
};

void tst_RequestedTexts::initTestCase()
{
    const QTemporaryDir folder;
    QVERIFY(folder.isValid());
    const QString list = folder.filePath(QStringLiteral("requested.ts"));
    QProcess lupdate;
    lupdate.setProcessChannelMode(QProcess::MergedChannels);
    lupdate.start(QStringLiteral(AELK_LUPDATE),
                  {"-silent", "-recursive", QStringLiteral(AELK_SOURCES), "-ts", list});
    QVERIFY2(lupdate.waitForFinished(), qPrintable(lupdate.errorString()));
    const QByteArray words = lupdate.readAll();
    QVERIFY2(lupdate.exitStatus() == QProcess::NormalExit && lupdate.exitCode() == 0,
             words.constData());
    // lupdate prints a warning if it cannot assign a tr() to a class.
    QCOMPARE(words, QByteArray());
    m_inSources = readTs(list);
    QVERIFY(!m_inSources.isEmpty());

    const std::optional<QmTable> table = readQm(readFile(QStringLiteral(":/qelk_ja_JP.qm")));
    QVERIFY(table);
    for (const QmMessage& message : table->messages) {
        m_inTable.insert({QString::fromUtf8(message.context), QString::fromUtf8(message.source)});
    }
}

void tst_RequestedTexts::onlyTheListedSourceTextsAreMissingFromTheTable()
{
    QCOMPARE(surplus(m_inSources, m_inTable), surplus(textsMissingInTable, {}));
}

void tst_RequestedTexts::onlyTheListedUnusedTextsAreMissingFromTheSources()
{
    QCOMPARE(surplus(m_inTable, m_inSources), surplus(unusedTexts, {}));
}

void tst_RequestedTexts::sourcesAndVocabularyHaveTheSameTexts()
{
    QCOMPARE(surplus(m_inSources, requestedTexts()), QStringList());
    QCOMPARE(surplus(requestedTexts(), m_inSources), QStringList());
}

QTEST_GUILESS_MAIN(tst_RequestedTexts)
#include "tst_RequestedTexts.moc"
