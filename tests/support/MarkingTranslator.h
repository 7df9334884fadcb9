// A translator that marks every text and records each request.
#pragma once

#include "support/Vocabulary.h"

#include <QTranslator>

namespace tests
{

/// Translates every text into the same text in guillemets, which no source text contains,
/// and records each request. Install it before the windows are constructed.
class MarkingTranslator : public QTranslator
{
public:
    QString translate(const char* context, const char* source, const char*, int) const override
    {
        m_requested.insert({QString::fromUtf8(context), QString::fromUtf8(source)});
        return marked(QString::fromUtf8(source));
    }
    bool isEmpty() const override { return false; }

    static QString marked(const QString& source) { return u'«' + source + u'»'; }

    const QSet<SourceText>& requested() const { return m_requested; }

private:
    mutable QSet<SourceText> m_requested;
};

} // namespace tests
