#include "UserDefaults.h"

#include "Diagnostics.h"

#include <QCoreApplication>
#include <QFile>
#include <QSettings>

#include <chrono>
#include <filesystem>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto writeInterval = 250ms;

bool writeToFile(const QString& file, const QHash<QString, QVariant>& values)
{
    QSettings settings(file, QSettings::IniFormat);
    for (auto it = values.cbegin(); it != values.cend(); ++it) {
        if (it.value().isValid())
            settings.setValue(it.key(), it.value());
        else
            settings.remove(it.key());
    }
    settings.sync();
    return settings.status() != QSettings::AccessError;
}

bool isDamaged(const QString& file)
{
    const QSettings settings(file, QSettings::IniFormat);
    (void)settings.allKeys(); // lines are looked at only when they are asked for
    return settings.status() == QSettings::FormatError;
}

/// In one step: whoever looks meanwhile finds the old file or the new one.
bool replaceFile(const QString& from, const QString& to)
{
    std::error_code error;
    std::filesystem::rename(from.toStdU16String(), to.toStdU16String(), error);
    return !error;
}

} // namespace

UserDefaults& UserDefaults::standard()
{
    static UserDefaults instance(standardFile());
    return instance;
}

QString UserDefaults::standardFile()
{
    return QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Morrowick"),
        QStringLiteral("Vexilo"))
        .fileName();
}

UserDefaults::UserDefaults(const QString& file)
    : m_file(file)
{
    const QSettings settings(file, QSettings::IniFormat);
    const QStringList keys = settings.allKeys();
    for (const QString& key : keys)
        m_values.insert(key, settings.value(key));
    if (settings.status() == QSettings::AccessError)
        printDiagnostic("Preferences could not be read: " + file.toStdString());
    if (settings.status() == QSettings::FormatError)
        repairFile();
}

void UserDefaults::repairFile() const
{
    // QSettings remembers its first error only: on a damaged file a failed write would go unseen.
    // The name is never without a file meanwhile: another start would take that for a first launch.
    const QString process = QString::number(QCoreApplication::applicationPid());
    const QString copy = m_file + QLatin1String(".copy-") + process;
    const QString repaired = m_file + QLatin1String(".repaired-") + process;
    const QString aside = m_file + QLatin1String(".damaged");
    if (QFile::copy(m_file, copy) && !isDamaged(copy)) {
        QFile::remove(copy); // another copy of the program was faster
        return;
    }
    if (replaceFile(copy, aside) && writeToFile(repaired, m_values)
        && replaceFile(repaired, m_file))
        printDiagnostic("Preferences were damaged; the file is kept as " + aside.toStdString());
    else
        printDiagnostic("Preferences are damaged: " + m_file.toStdString());
}

UserDefaults::~UserDefaults()
{
    {
        const std::lock_guard lock(m_mutex);
        m_demand = Demand::Stop;
    }
    m_wake.notify_one();
    if (m_writer.joinable())
        m_writer.join();
}

bool UserDefaults::boolForKey(const QString& key) const
{
    const QVariant value = m_values.value(key);
    if (value.typeId() == QMetaType::Bool)
        return value.toBool();
    const QString text = value.toString().toLower();
    return text == QLatin1String("true") || text == QLatin1String("yes") || value.toDouble() != 0.0;
}

qint64 UserDefaults::integerForKey(const QString& key) const
{
    return m_values.value(key).toLongLong();
}

double UserDefaults::doubleForKey(const QString& key) const
{
    return m_values.value(key).toDouble();
}

bool UserDefaults::contains(const QString& key) const { return m_values.contains(key); }

void UserDefaults::setValue(const QString& key, const QVariant& value)
{
    m_values.insert(key, value);
    enqueue(key, value);
}

void UserDefaults::removeValue(const QString& key)
{
    m_values.remove(key);
    enqueue(key, QVariant());
}

void UserDefaults::enqueue(const QString& key, const QVariant& value)
{
    const std::lock_guard lock(m_mutex);
    m_pending.insert(key, value);
    if (!m_writer.joinable())
        m_writer = std::thread(&UserDefaults::writeUntilStopped, this);
    if (!std::exchange(m_changedSinceAttempt, true))
        m_wake.notify_one();
}

void UserDefaults::synchronize()
{
    std::unique_lock lock(m_mutex);
    if (m_pending.isEmpty() && m_attemptsBegun == m_attemptsEnded)
        return;
    // An attempt under way has taken its values already: wait for one that begins after now.
    const quint64 attempt = m_attemptsBegun + 1;
    m_demand = Demand::Flush;
    m_wake.notify_one();
    m_attemptEnded.wait(lock, [this, attempt] { return m_attemptsEnded >= attempt; });
}

void UserDefaults::writeUntilStopped()
{
    std::unique_lock lock(m_mutex);
    bool last = false;
    while (!last) {
        // Values that could not be written wait for the next change, so that a full disk is not
        // written to again and again.
        m_wake.wait(lock, [this] { return m_changedSinceAttempt || m_demand != Demand::None; });
        m_wake.wait_for(lock, writeInterval, [this] { return m_demand != Demand::None; });
        last = m_demand == Demand::Stop;
        if (!last)
            m_demand = Demand::None;
        writeBatch(lock);
    }
}

void UserDefaults::writeBatch(std::unique_lock<std::mutex>& lock)
{
    const QHash<QString, QVariant> batch = std::exchange(m_pending, {});
    m_changedSinceAttempt = false;
    ++m_attemptsBegun;
    lock.unlock();
    const bool written = batch.isEmpty() || writeToFile(m_file, batch);
    if (!written)
        printDiagnostic("Preferences could not be written: " + m_file.toStdString());
    lock.lock();
    ++m_attemptsEnded;
    m_attemptEnded.notify_all();
    if (written)
        return;
    for (auto it = batch.cbegin(); it != batch.cend(); ++it) {
        if (!m_pending.contains(it.key()))
            m_pending.insert(it.key(), it.value());
    }
}
