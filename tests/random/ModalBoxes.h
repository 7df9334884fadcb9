// Answers the message boxes of file dialogs automatically.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>

namespace tests
{

/// Answers every modal message box that opens during the lifetime of this object. Without
/// an answer, the box would block the test for ever.
class ModalBoxes : public QObject
{
public:
    ModalBoxes()
    {
        connect(&m_timer, &QTimer::timeout, this, [this] { answer(); });
        constexpr int interval = 5; // ms
        m_timer.start(interval);
    }

    /// Sets whether to click the "Yes" button of a message box that has one. Otherwise, and
    /// by default, message boxes are rejected.
    void setAccepting(bool accepts) { m_accepts = accepts; }

private:
    void answer()
    {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            QAbstractButton* yes = box->button(QMessageBox::Yes);
            m_accepts&& yes ? yes->click() : box->reject();
        }
    }

    QTimer m_timer;
    bool m_accepts = false;
};

} // namespace tests
