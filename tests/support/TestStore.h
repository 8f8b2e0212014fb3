#pragma once

#include "NSPersistentContainer.h"

#include <QTemporaryDir>

#include <memory>

/// A store of saved bills on a file of its own, which goes with it.
class TestStore {
public:
    TestStore();

    [[nodiscard]] NSManagedObjectContext& context() { return m_container->viewContext(); }
    [[nodiscard]] QString file() const
    {
        return m_folder.filePath(QStringLiteral("Vexilo.sqlite"));
    }
    /// A second container on the same file, as another running copy of the program has.
    [[nodiscard]] std::unique_ptr<NSPersistentContainer> otherProgram() const;

private:
    QTemporaryDir m_folder;
    std::unique_ptr<NSPersistentContainer> m_container = otherProgram();
};
