#include "SettledTexts.h"

#include <utility>

using namespace std::chrono_literals;

SettledTexts::SettledTexts(QObject* parent)
    : QObject(parent)
{
    m_timer.setSingleShot(true);
    // Longer than a person who types goes without a key, shorter than one waits for an answer.
    m_timer.setInterval(700ms);
    connect(&m_timer, &QTimer::timeout, this, &SettledTexts::tell);
}

void SettledTexts::setTexts(const QStringList& texts)
{
    if (texts == m_texts)
        return;
    m_texts = texts;
    if (m_told.isEmpty())
        m_told = texts;
    Q_EMIT textsChanged();
    await();
}

void SettledTexts::setHeld(bool held)
{
    if (held == m_held)
        return;
    m_held = held;
    Q_EMIT heldChanged();
    await();
}

void SettledTexts::await()
{
    if (m_held || m_texts.isEmpty() || m_texts == m_told)
        m_timer.stop();
    else
        m_timer.start();
}

void SettledTexts::tell()
{
    const QStringList before = std::exchange(m_told, m_texts);
    QStringList changes;
    for (qsizetype i = 0; i < m_texts.size(); ++i) {
        if (m_texts.at(i) != before.value(i))
            changes.append(m_texts.at(i));
    }
    Q_EMIT settled(changes.join(QLatin1String("; ")));
}
