#include "ContentView.h"
#include "ShownApp.h"
#include "UserSettings.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QScopeGuard>
#include <QTest>

/// When the application speaks of the results, with assistive software that listens.
class AnnouncingTest : public QObject {
    Q_OBJECT

private:
    ShownApp m_shown;

    [[nodiscard]] const QObject* announcer();

private Q_SLOTS:
    void initTestCase() { m_shown.begin(); }
    void cleanupTestCase() { m_shown.end(); }
    void resultsAreAnnouncedWhereNothingCoversThem();
    void zerosInThePlaceOfResultsAreNotAnnounced();
};

/// What speaks of the results; null where nothing does.
const QObject* AnnouncingTest::announcer()
{
    QList<const QQuickItem*> items { m_shown.window().contentItem() };
    while (!items.isEmpty()) {
        const QQuickItem* const item = items.takeLast();
        if (QByteArrayView(item->metaObject()->className()).startsWith("ResultsAnnouncer"))
            return item;
        for (const QQuickItem* const child : item->childItems())
            items.append(child);
    }
    return nullptr;
}

void AnnouncingTest::resultsAreAnnouncedWhereNothingCoversThem()
{
    m_shown.start(Qt::LeftToRight);
    QAccessible::setActive(true);
    const auto back = qScopeGuard([] { QAccessible::setActive(false); });
    const QObject* const speaker = announcer();
    QVERIFY(speaker);

    for (const Screen& screen : m_shown.screens()) {
        m_shown.show(screen);
        QVERIFY2(
            speaker->property("held").toBool() == (screen.layers > 0), qPrintable(screen.name));
        m_shown.close();
        QVERIFY2(!speaker->property("held").toBool(), qPrintable(screen.name));
    }
}

void AnnouncingTest::zerosInThePlaceOfResultsAreNotAnnounced()
{
    m_shown.start(Qt::LeftToRight);
    QAccessible::setActive(true);
    UserSettings& settings = UserSettings::shared();
    const auto back = qScopeGuard([&settings, bill = settings.bill()] {
        settings.setBill(bill);
        QAccessible::setActive(false);
    });
    const QObject* const speaker = announcer();
    QVERIFY(speaker);
    QVERIFY(!speaker->property("held").toBool());

    settings.setBill(9e16);

    QVERIFY(!m_shown.view().hasResults());
    QVERIFY(speaker->property("held").toBool());
}

int main(int argc, char* argv[])
{
    // The bus has to be there before the application.
    AnnouncingTest test;
    const QGuiApplication application(argc, argv);
    return QTest::qExec(&test, argc, argv);
}

#include "AnnouncingTest.moc"
