#pragma once

#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <chrono>

/// Texts that change by themselves, told once they have stayed the same for a while: of an amount
/// that is being typed only what came of it is worth being said. What is there at first is not
/// told, nor what has changed back.
class SettledTexts : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// Always as many, but for none at all, which stands for texts that are not known yet.
    Q_PROPERTY(QStringList texts READ texts WRITE setTexts NOTIFY textsChanged)
    /// Whether nothing is to be told now; what changed meanwhile is told later.
    Q_PROPERTY(bool held READ held WRITE setHeld NOTIFY heldChanged)

public:
    explicit SettledTexts(QObject* parent = nullptr);

    [[nodiscard]] QStringList texts() const { return m_texts; }
    void setTexts(const QStringList& texts);
    [[nodiscard]] bool held() const { return m_held; }
    void setHeld(bool held);
    /// How long they stay the same before they are told.
    void setDelay(std::chrono::milliseconds delay) { m_timer.setInterval(delay); }

Q_SIGNALS:
    void textsChanged();
    void heldChanged();
    /// The texts that differ from those told before, in their order, parted by semicolons.
    void settled(const QString& changes);

private:
    void await();
    void tell();

    QStringList m_texts;
    QStringList m_told;
    bool m_held = false;
    QTimer m_timer;
};
