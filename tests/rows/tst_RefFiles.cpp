// Tests of RefFiles, a list of reference rows that forwards the signals of all rows.

#include "rows/ARefFile.h"
#include "rows/DialogSettings.h"
#include "rows/RefFiles.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

class tst_RefFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listStartsEmpty();
    void signalsOfConnectedRowsAreForwarded();
    void listDoesNotOwnItsRows();

private:
    const tests::DialogSettings m_settings;
};

void tst_RefFiles::listStartsEmpty()
{
    const RefFiles refs;
    QVERIFY(refs.RefRows.isEmpty());
}

void tst_RefFiles::signalsOfConnectedRowsAreForwarded()
{
    ARefFile first;
    ARefFile second;
    RefFiles refs;
    refs.RefRows = {&first, &second};
    for (ARefFile* row : std::as_const(refs.RefRows)) {
        connect(row, &ARefFile::changedUse, &refs, &RefFiles::changedUse);
        connect(row, &ARefFile::selectedFile, &refs, &RefFiles::selectedFile);
    }
    const QSignalSpy uses(&refs, &RefFiles::changedUse);
    const QSignalSpy files(&refs, &RefFiles::selectedFile);
    second.UseCB->click();
    QCOMPARE(uses.size(), 1);
    first.setUse(true);
    QCOMPARE(uses.size(), 3);
    second.XafsFS->clearFileName();
    QCOMPARE(files.size(), 1);
}

void tst_RefFiles::listDoesNotOwnItsRows()
{
    ARefFile row;
    {
        RefFiles refs;
        refs.RefRows = {&row};
    }
    QVERIFY(row.parent() == nullptr);
    row.setUse(true);
    QVERIFY(row.UseCB->isChecked());
}

QTEST_MAIN(tst_RefFiles)
#include "tst_RefFiles.moc"
