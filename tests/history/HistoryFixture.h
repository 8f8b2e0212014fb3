#pragma once

#include "Item.h"
#include "TestStore.h"
#include "UserDefaults.h"
#include "UserSettings.h"

#include <QFile>
#include <QTemporaryDir>

class QAbstractItemModel;

/// What the screen of the saved bills stands on: a store without bills, and preferences at their
/// first-run values, but with totals in the list.
class HistoryFixture {
public:
    HistoryFixture() { m_settings.setShowShareInSavedBillsList(false); }

    [[nodiscard]] UserSettings& settings() { return m_settings; }
    [[nodiscard]] NSManagedObjectContext& context() { return m_store.context(); }
    [[nodiscard]] std::unique_ptr<NSPersistentContainer> otherProgram() const
    {
        return m_store.otherProgram();
    }

    /// Saves a bill of 100 for two, of the level "Good", that everyone tips.
    std::shared_ptr<Item> addBill(const QString& ref, const QDateTime& stamp);
    /// Saves bills of these descriptions, the first one the newest.
    void addBills(const QStringList& refs);
    /// Takes the store's file away, so that no save succeeds any more.
    void removeStoreFile() const { QFile::remove(m_store.file()); }
    /// Saves the context; a failure ends the test.
    void save();

    /// Another running copy of the program renames the bill of that description, or deletes it.
    void renameElsewhere(const QString& ref, const QString& newRef) const;
    void deleteElsewhere(const QString& ref) const;
    /// The descriptions in the store, in its order, as another program reads them.
    [[nodiscard]] QStringList storedRefs() const;

private:
    QTemporaryDir m_folder;
    UserDefaults m_defaults { m_folder.filePath(QStringLiteral("preferences.ini")) };
    UserSettings m_settings { m_defaults };
    TestStore m_store;
};

/// A Saturday.
[[nodiscard]] QDateTime pieDay(int hour = 12, int minute = 0);

/// What a row of a list shows under that role.
[[nodiscard]] QVariant shown(const QAbstractItemModel& list, int row, const char* role);
/// The descriptions of every row.
[[nodiscard]] QStringList shownRefs(const QAbstractItemModel& list);
