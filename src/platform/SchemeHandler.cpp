#include "SchemeHandler.h"

#include <QFile>
#include <QStandardPaths>
#include <QStringList>

#include <algorithm>

namespace {

const QStringList grantingGroups { QStringLiteral("[Default Applications]"),
    QStringLiteral("[Added Associations]"), QStringLiteral("[MIME Cache]") };
const QString removingGroup = QStringLiteral("[Removed Associations]");

QStringList allIn(QStandardPaths::StandardLocation location, const QString& name)
{
    return QStandardPaths::locateAll(location, name);
}

/// The lists of associations, those of one desktop before those of all, the user's before the
/// system's.
QStringList associationFiles()
{
    QStringList names;
    const QString desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP");
    for (const QString& desktop : desktops.split(QLatin1Char(':'), Qt::SkipEmptyParts))
        names.append(desktop.toLower() + QLatin1String("-mimeapps.list"));
    names.append(QStringLiteral("mimeapps.list"));

    QStringList files;
    for (const QString& name : std::as_const(names))
        files += allIn(QStandardPaths::GenericConfigLocation, name);
    for (const QString& name : std::as_const(names))
        files += allIn(QStandardPaths::ApplicationsLocation, name);
    return files + allIn(QStandardPaths::ApplicationsLocation, QStringLiteral("mimeinfo.cache"));
}

/// What one file says of a type: the programs that it grants and those that it takes away.
struct Associations {
    QStringList granted;
    QStringList removed;
};

Associations readAssociations(const QString& fileName, const QString& type)
{
    Associations associations;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return associations;
    QStringList* group = nullptr;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.startsWith(QLatin1Char('[')))
            group = line == removingGroup       ? &associations.removed
                : grantingGroups.contains(line) ? &associations.granted
                                                : nullptr;
        else if (group && line.section(QLatin1Char('='), 0, 0).trimmed() == type)
            *group += line.section(QLatin1Char('='), 1).split(QLatin1Char(';'), Qt::SkipEmptyParts);
    }
    return associations;
}

/// A dash in a program's name may stand for a folder.
bool isInstalled(const QString& program)
{
    QString path = program.trimmed();
    for (;;) {
        if (!QStandardPaths::locate(QStandardPaths::ApplicationsLocation, path).isEmpty())
            return true;
        const qsizetype dash = path.indexOf(QLatin1Char('-'));
        if (dash < 0)
            return false;
        path[dash] = QLatin1Char('/');
    }
}

} // namespace

bool hasHandlerFor(const QString& scheme)
{
    const QString type = QLatin1String("x-scheme-handler/") + scheme;
    QStringList removed; // by the files read so far, which come before the next
    const QStringList files = associationFiles();
    for (const QString& file : files) {
        const Associations associations = readAssociations(file, type);
        if (std::any_of(associations.granted.cbegin(), associations.granted.cend(),
                [&removed](const QString& program) {
                    return !removed.contains(program) && isInstalled(program);
                }))
            return true;
        removed += associations.removed;
    }
    return false;
}
