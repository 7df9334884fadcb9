// Helpers for the data rows of a test.
#pragma once

#include <QStringList>
#include <QTest>

namespace tests
{

/// Adds a test data row of text columns. @p texts are in the order of the columns.
inline void addTexts(const char* name, const QStringList& texts)
{
    QTestData& row = QTest::newRow(name);
    for (const QString& text : texts) {
        row << text;
    }
}

} // namespace tests
