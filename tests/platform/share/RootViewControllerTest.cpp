#include "RootViewController.h"

#include "DeathTest.h"
#include "NoDesktop.h"
#include "UIActivityViewController.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

#include <memory>
#include <utility>

class RootViewControllerTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_home;
    std::unique_ptr<QWindow> m_window;
    RootViewController* m_root = nullptr;
    QStringList m_outcomes; // of all sheets, in the order in which they came

    /// A sheet that tells by its name when its user is done with it.
    std::unique_ptr<UIActivityViewController> sheet(const QString& name)
    {
        auto sheet = std::make_unique<UIActivityViewController>(ActivityItems { { .text = name } });
        sheet->setCompletionHandler(
            [this, name](const auto& type, bool completed, const auto&, const auto&) {
                QVERIFY(!type && !completed);
                m_outcomes.append(name);
            });
        return sheet;
    }

    [[nodiscard]] QString presentedText() const
    {
        return m_root->presented() ? m_root->presented()->text() : QString();
    }

private Q_SLOTS:
    void initTestCase() { useNoDesktop(m_home.path()); }

    void init()
    {
        m_window = std::make_unique<QWindow>();
        m_root = new RootViewController(m_window.get());
        m_outcomes.clear();
    }

    void aWindowKnowsItsOwn()
    {
        const QWindow other;

        QCOMPARE(&RootViewController::of(*m_window), m_root);
        const Death death = deathOf([&other] { (void)RootViewController::of(other); });
        QVERIFY(death.aborted);
        QCOMPARE(death.message,
            QByteArray("Unexpectedly found nil while unwrapping an Optional value\n"));
    }

    void aPresentedSheetIsOpenedAndAnnounced()
    {
        const QSignalSpy changes(m_root, &RootViewController::presentedChanged);

        m_root->present(sheet(QStringLiteral("first")));

        QCOMPARE(changes.count(), 1);
        QCOMPARE(presentedText(), QStringLiteral("first"));
        QVERIFY(m_root->presented()->groups().first()->rowCount() > 0);
    }

    void aSheetIsLetGoOfOnceItIsOutOfSight()
    {
        m_root->present(sheet(QStringLiteral("first")));
        QSignalSpy gone(m_root->presented(), &QObject::destroyed);

        m_root->presented()->close();
        QCOMPARE(presentedText(), QStringLiteral("first"));
        m_root->dismiss();

        QCOMPARE(m_root->presented(), nullptr);
        QTRY_COMPARE(gone.count(), 1);
    }

    void whileOneSheetIsOpenAnotherIsNotShown()
    {
        m_root->present(sheet(QStringLiteral("first")));

        m_root->present(sheet(QStringLiteral("second")));

        QCOMPARE(presentedText(), QStringLiteral("first"));
        QCOMPARE(m_outcomes, QStringList(QStringLiteral("second")));
    }

    void whileOneSheetSlidesAwayAnotherWaits()
    {
        m_root->present(sheet(QStringLiteral("first")));
        m_root->presented()->close();

        m_root->present(sheet(QStringLiteral("second")));
        QCOMPARE(presentedText(), QStringLiteral("first"));
        QStringList seen;
        connect(m_root, &RootViewController::presentedChanged, this,
            [this, &seen] { seen.append(presentedText()); });
        m_root->dismiss();

        // The view of the first one goes before that of the second one comes.
        QCOMPARE(seen, QStringList({ QString(), QStringLiteral("second") }));
        QCOMPARE(m_outcomes, QStringList(QStringLiteral("first")));
    }

    void aSheetThatIsClosedWhileItWaitsIsNotShown()
    {
        m_root->present(sheet(QStringLiteral("first")));
        m_root->presented()->close();
        auto second = sheet(QStringLiteral("second"));
        UIActivityViewController* const waiting = second.get();
        m_root->present(std::move(second));

        waiting->close();
        m_root->dismiss();

        QCOMPARE(m_root->presented(), nullptr);
        QCOMPARE(m_outcomes, QStringList({ QStringLiteral("first"), QStringLiteral("second") }));
    }

    void inThePlaceOfASheetThatWasClosedWhileItWaitedAnotherWaits()
    {
        m_root->present(sheet(QStringLiteral("first")));
        m_root->presented()->close();
        auto second = sheet(QStringLiteral("second"));
        UIActivityViewController* const waiting = second.get();
        m_root->present(std::move(second));
        waiting->close();

        m_root->present(sheet(QStringLiteral("third")));
        m_root->dismiss();

        QCOMPARE(presentedText(), QStringLiteral("third"));
        QCOMPARE(m_outcomes, QStringList({ QStringLiteral("first"), QStringLiteral("second") }));
    }

    void aSheetThatGoesWithItsWindowReportsNothing()
    {
        m_root->present(sheet(QStringLiteral("first")));

        m_window.reset();

        QCOMPARE(m_outcomes, QStringList());
    }
};

QTEST_MAIN(RootViewControllerTest)
#include "RootViewControllerTest.moc"
