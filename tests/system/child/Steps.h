// What system_child can do, one step after the other.
#pragma once

#include "rows/AEPoint.h"
#include "rows/AXafsFileSelect.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QStringList>

#include <memory>

class FourPs;

/// The steps and what they work on: one energy row and one spectrum row, each on
/// its own, and a panel, made when first used. Every step tells what it left as
/// one line of JSON on standard output, with its lines of the debug log.
class Steps
{
public:
    Steps();
    ~Steps();
    Steps(const Steps&) = delete;
    Steps& operator=(const Steps&) = delete;

    /// Runs all steps of @p words, each a name and its arguments; false at a name
    /// that is none or without all its arguments.
    bool run(QList<QByteArray> words);

private:
    using Arguments = QList<QByteArray>;
    struct Kind;
    static const QList<Kind>& kinds();

    // Reading. The peak and what is left of memory are those of the read alone.
    QJsonObject map(const Arguments& path);
    QJsonObject spectrum(const Arguments& path);
    QJsonObject drop(const Arguments& url);
    QJsonObject folder(const Arguments& path);
    QJsonObject panelMap(const Arguments& rowAndPath);

    // A result.
    QJsonObject calculate(const Arguments& widthAndHeight);
    QJsonObject bins(const Arguments& alphaAndThickness);
    QJsonObject write(const Arguments& path);
    QJsonObject file(const Arguments& path);
    QJsonObject make(const Arguments& pathAndSize);

    // The system.
    QJsonObject littleMemory(const Arguments& mebibytes);
    QJsonObject fileSize(const Arguments& bytes);
    QJsonObject nobody(const Arguments&);
    QJsonObject remark(const Arguments& text);
    QJsonObject happens(const Arguments& hook);

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
    qint64 m_addressSpaceLeft = -1; ///< bytes for each read, no limit below 0
};
