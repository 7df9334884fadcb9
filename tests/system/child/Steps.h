// The steps that system_child can run.
#pragma once

#include "rows/AEPoint.h"
#include "rows/AXafsFileSelect.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QStringList>

#include <memory>

class FourPs;

/// Runs the steps. They use one energy row and one spectrum row, which are not part of a
/// panel, and a panel, which is created when a step first needs it. After each step, one line
/// of JSON on standard output describes the resulting state and contains the new lines of the
/// debug log.
class Steps
{
public:
    Steps();
    ~Steps();
    Steps(const Steps&) = delete;
    Steps& operator=(const Steps&) = delete;

    /// Runs the steps in @p words. Each step is a name followed by its arguments. At an
    /// unknown name or a missing argument, stops and returns false.
    bool run(QList<QByteArray> words);

private:
    using Arguments = QList<QByteArray>;
    struct Kind;
    static const QList<Kind>& kinds();

    // Reading. If a report has "peak" and "left", they are the highest memory use during the
    // read and the memory use after it, in bytes more than before the read.
    QJsonObject map(const Arguments& path);
    QJsonObject spectrum(const Arguments& path);
    QJsonObject drop(const Arguments& url);
    QJsonObject folder(const Arguments& path);
    QJsonObject panelMap(const Arguments& rowAndPath);

    // Calculating and writing a result.
    QJsonObject calculate(const Arguments& widthAndHeight);
    QJsonObject bins(const Arguments& alphaAndThickness);
    QJsonObject write(const Arguments& path);
    QJsonObject file(const Arguments& path);
    QJsonObject make(const Arguments& pathAndSize);

    // Limits and hooks.
    QJsonObject limitMemory(const Arguments& mebibytes);
    QJsonObject limitFileSize(const Arguments& bytes);
    QJsonObject dropRoot(const Arguments&);
    QJsonObject logText(const Arguments& text);
    QJsonObject hook(const Arguments& words);

    QJsonObject mapState() const;
    QJsonObject spectrumState() const;
    QByteArray panelState();
    QStringList newMessages();
    FourPs& panel();
    template <typename Read>
    QJsonObject measured(Read read);

    AEPoint m_row;
    AXafsFileSelect m_spectrumRow;
    std::unique_ptr<FourPs> m_panel;
    int m_newData = 0;
    int m_newEdges = 0;
    QStringList m_energies;
    qsizetype m_messagesSeen = 0;
    qint64 m_addressSpaceLeft = -1; ///< bytes for each read or write; negative for no limit
};
