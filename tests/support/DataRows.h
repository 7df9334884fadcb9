// Short ways to write the data of a test.
#pragma once

#include <QStringList>
#include <QTest>

namespace tests
{

/// A row that has texts only, in the order of the columns.
inline void addTexts(const char* name, const QStringList& texts)
{
    QTestData& row = QTest::newRow(name);
    for (const QString& text : texts) {
        row << text;
    }
}

} // namespace tests
