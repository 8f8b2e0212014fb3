#pragma once

#include <QObject>

inline constexpr QLatin1String AppName("Vexilo");
inline constexpr QLatin1String CompanyName("Morrowick");

/// The texts that identify the program. Never changed after construction; properties so that views
/// can bind to them.
class GlobalModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString appName MEMBER appName CONSTANT)
    Q_PROPERTY(QString copyrightStr MEMBER copyrightStr CONSTANT)
    Q_PROPERTY(QString website MEMBER website CONSTANT)
    Q_PROPERTY(QString websiteHelp MEMBER websiteHelp CONSTANT)

public:
    /// The one instance. Never torn down.
    static GlobalModel& shared();

    const QString appName = AppName;
    const QString copyrightStr; ///< one line
    const QString website; ///< absolute address of the maker's website
    const QString websiteHelp; ///< absolute address of the program's help page

private:
    GlobalModel();
};
