#include "SettingsView.h"
#include "StoreFiles.h"
#include "UserDefaults.h"

#include <QQmlEngine>
#include <QtQml/qqmlextensionplugin.h>
#include <QtQuickTest>

Q_IMPORT_QML_PLUGIN(Vexilo_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Vexilo_SettingsPlugin)

/// The state of the screen over preferences of its own, for tests that press its keys.
class World : public QObject {
    Q_OBJECT
    Q_PROPERTY(SettingsView* view READ view NOTIFY viewChanged)
    Q_PROPERTY(double serviceGood READ serviceGood)
    Q_PROPERTY(double serviceExcellent READ serviceExcellent)
    Q_PROPERTY(double theme READ theme)
    Q_PROPERTY(bool showCurrency READ showCurrency)
    Q_PROPERTY(bool highlightSums READ highlightSums)

public:
    using QObject::QObject;

    [[nodiscard]] SettingsView* view() const { return m_view.get(); }
    [[nodiscard]] double serviceGood() const { return static_cast<double>(m_user->serviceGood()); }
    [[nodiscard]] double serviceExcellent() const
    {
        return static_cast<double>(m_user->serviceExcellent());
    }
    [[nodiscard]] double theme() const { return static_cast<double>(m_user->theme()); }
    [[nodiscard]] bool showCurrency() const { return m_user->showCurrency(); }
    [[nodiscard]] bool highlightSums() const { return m_user->highlightSums(); }

    /// A new screen over preferences with these percentages, all else as at a first launch.
    Q_INVOKABLE void open(int good, int excellent)
    {
        close();
        m_user.reset();
        m_defaults.reset(); // writes what is pending, into the folder
        m_folder = std::make_unique<QTemporaryDir>();
        m_defaults
            = std::make_unique<UserDefaults>(m_folder->filePath(QStringLiteral("preferences.ini")));
        m_user = std::make_unique<UserSettings>(*m_defaults);
        m_user->setServiceGood(good);
        m_user->setServiceExcellent(excellent);
        m_view = std::make_unique<SettingsView>(*m_user, false, [] { return false; });
        Q_EMIT viewChanged();
        m_view->appear();
    }
    Q_INVOKABLE void close()
    {
        // What is bound to the screen's state hears that it goes before it does.
        const std::unique_ptr<SettingsView> previous = std::move(m_view);
        Q_EMIT viewChanged();
    }

Q_SIGNALS:
    void viewChanged();

private:
    TemporaryHome m_home;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<UserSettings> m_user;
    std::unique_ptr<SettingsView> m_view;
};

class Setup : public QObject {
    Q_OBJECT

public Q_SLOTS:
    /// Called for each test file, each with an engine of its own.
    void qmlEngineAvailable(QQmlEngine* engine)
    {
        qmlRegisterSingletonInstance("SettingsTest", 1, 0, "World", new World(engine));
    }
};

QUICK_TEST_MAIN_WITH_SETUP(settings, Setup)
#include "SettingsScreenTest.moc"
