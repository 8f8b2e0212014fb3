#include "StoreFileWatch.h"
#include "StoreFixture.h"

#include <QSignalSpy>
#include <QTest>

/// Who writes into a store file is noticed, and what was written can be read by then.
class StoreFileWatchTest : public QObject {
    Q_OBJECT

private:
    StoreFolder m_folder;
    std::unique_ptr<NSPersistentContainer> m_container;
    std::unique_ptr<StoreFileWatch> m_watch;

private Q_SLOTS:
    void init()
    {
        m_folder = StoreFolder();
        m_container = openContainer(m_folder.file());
        m_watch = std::make_unique<StoreFileWatch>();
        m_watch->watch(m_folder.file());
    }

    void cleanup()
    {
        m_watch.reset();
        m_container.reset();
    }

    void aSaveIsTold()
    {
        QSignalSpy told(m_watch.get(), &StoreFileWatch::maybeWritten);

        addNote(m_container->viewContext(), QStringLiteral("a"));
        mustSave(m_container->viewContext());

        QVERIFY(told.wait());
    }

    void aSaveIsToldAgainInCaseItCouldNotBeReadYet()
    {
        QSignalSpy told(m_watch.get(), &StoreFileWatch::maybeWritten);

        addNote(m_container->viewContext(), QStringLiteral("a"));
        mustSave(m_container->viewContext());

        QTRY_VERIFY(told.size() >= 4);
    }

    void savesInARowAreToldWhileTheyLast()
    {
        const auto other = openContainer(m_folder.file());
        bool isSeen = false;
        connect(m_watch.get(), &StoreFileWatch::maybeWritten, this,
            [&] { isSeen = isSeen || !titles(other->viewContext()).isEmpty(); });

        for (int i = 0; i < 1000 && !isSeen; ++i) {
            addNote(m_container->viewContext(), QString::number(i));
            mustSave(m_container->viewContext());
            QCoreApplication::processEvents();
        }

        QVERIFY(isSeen);
    }
};

QTEST_GUILESS_MAIN(StoreFileWatchTest)
#include "StoreFileWatchTest.moc"
