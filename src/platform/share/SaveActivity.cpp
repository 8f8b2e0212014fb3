#include "SaveActivity.h"

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QSaveFile>

namespace {

bool writeWhole(QSaveFile& file, const QByteArray& content)
{
    // A buffer would be written at the end, where commit() misses a failure.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return false;
    qint64 written = 0;
    while (written < content.size()) {
        // A full disk takes a part first, and says why it takes no more when it is asked again.
        const qint64 part = file.write(content.constData() + written, content.size() - written);
        if (part <= 0)
            return false;
        written += part;
    }
    return file.commit();
}

} // namespace

SaveActivity::SaveActivity(QObject* parent)
    : Activity(parent)
{
    connect(&m_chooser, &FileChooser::chosen, this, &SaveActivity::save);
    connect(&m_chooser, &FileChooser::cancelled, this, [this] { finishCancelled(); });
    connect(&m_chooser, &FileChooser::failed, this,
        [this](const QString& description) { finishFailed(description); });
}

void SaveActivity::perform(const ActivityItem& item)
{
    m_text = item.text;
    m_chooser.askWhereToSave(
        title(), QGuiApplication::applicationDisplayName() + QLatin1Char('.') + suffix());
}

void SaveActivity::save(const QString& path)
{
    QSaveFile file(path);
    if (QFileInfo(path).exists() && !QFileInfo(path).isFile())
        finishFailed(tr("“%1” is no file.").arg(QDir::toNativeSeparators(path)));
    else if (writeWhole(file, contentOf(m_text)))
        finish();
    else
        finishFailed(tr("The file “%1” could not be written: %2.")
                         .arg(QDir::toNativeSeparators(path), file.errorString()));
}
