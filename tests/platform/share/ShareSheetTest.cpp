#include "ShareSheet.h"

#include "ActivityTypes.h"
#include "FakeActivity.h"
#include "NoDesktop.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTest>

/// A view that presents the sheet by its flag.
class ShareSheetTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_home;
    bool m_isPresented = false;
    QString m_text;
    QStringList m_order; // of what the view is told

    Binding<bool> flag()
    {
        return { .get = [this] { return m_isPresented; },
            .set =
                [this](bool isPresented) {
                    m_isPresented = isPresented;
                    m_order.append(QStringLiteral("isPresented"));
                } };
    }

    Binding<QString> item()
    {
        return { .get = [this] { return m_text; }, .set = {} };
    }

    ActivityCompletion noted()
    {
        return [this](const std::optional<ActivityType>& type, bool completed,
                   const std::optional<QVariantList>& items,
                   const std::optional<ActivityError>& error) {
            QVERIFY(!items && !error);
            QVERIFY(m_isPresented);
            m_order.append(type.value_or(QStringLiteral("none"))
                + (completed ? QStringLiteral(" completed") : QString()));
        };
    }

    static Activity* copying(UIActivityViewController& controller)
    {
        const ActivityModel* const group = controller.groups().first();
        return group->data(group->index(0), ActivityModel::ActivityRole).value<Activity*>();
    }

private Q_SLOTS:
    void initTestCase() { useNoDesktop(m_home.path()); }

    void init()
    {
        m_isPresented = true;
        m_text = QStringLiteral("Everyone pays $30.00");
        m_order.clear();
    }

    void theListsStartAbsent()
    {
        const ShareSheet sheet(flag(), item(), noted());

        QVERIFY(!sheet.applicationActivities);
        QVERIFY(!sheet.excludedActivityTypes);
        QVERIFY(sheet.callback);
        QCOMPARE(sheet.isPresented.get(), true);
        QCOMPARE(sheet.activityItem.get(), m_text);
    }

    void theTextOfTheMomentIsTheOnlyItem()
    {
        const ShareSheet sheet(flag(), item(), std::nullopt);
        m_text = QStringLiteral("later");

        const auto controller = sheet.makeController();
        m_text = QStringLiteral("too late");

        QCOMPARE(controller->activityItems().size(), 1);
        QCOMPARE(controller->activityItems().first().text, QStringLiteral("later"));
        QVERIFY(!controller->activityItems().first().excerpt);
        QVERIFY(!controller->applicationActivities());
        QVERIFY(!controller->excludedActivityTypes());
    }

    void finishingCallsTheCallbackAndThenClearsTheFlag()
    {
        const auto controller = ShareSheet(flag(), item(), noted()).makeController();
        controller->open();

        controller->choose(copying(*controller));

        QCOMPARE(m_order,
            QStringList({ QStringLiteral("copy completed"), QStringLiteral("isPresented") }));
        QCOMPARE(m_isPresented, false);
        QCOMPARE(QGuiApplication::clipboard()->text(), m_text);
    }

    void cancellingCallsTheCallbackAndClearsTheFlag()
    {
        const auto controller = ShareSheet(flag(), item(), noted()).makeController();
        controller->open();

        controller->close();

        QCOMPARE(m_order, QStringList({ QStringLiteral("none"), QStringLiteral("isPresented") }));
        QCOMPARE(m_isPresented, false);
    }

    void withoutACallbackFinishingOnlyClearsTheFlag()
    {
        const auto controller = ShareSheet(flag(), item(), std::nullopt).makeController();
        controller->open();

        controller->choose(copying(*controller));

        QCOMPARE(m_order, QStringList(QStringLiteral("isPresented")));
        QCOMPARE(m_isPresented, false);
    }

    void itsListsReachTheController()
    {
        const auto own = std::make_shared<FakeActivity>(QStringLiteral("own"));
        ShareSheet sheet(flag(), item(), std::nullopt);
        sheet.applicationActivities = Activities { own };
        sheet.excludedActivityTypes = QList<ActivityType> { activityType::qrCode };

        const auto controller = sheet.makeController();

        QCOMPARE(controller->applicationActivities()->front(), own);
        QCOMPARE(
            *controller->excludedActivityTypes(), QList<ActivityType> { activityType::qrCode });
    }

    void anUpdateChangesNothing()
    {
        const auto controller = ShareSheet(flag(), item(), noted()).makeController();
        controller->open();
        m_text = QStringLiteral("another bill");

        ShareSheet(flag(), item(), std::nullopt).updateController(*controller);

        QCOMPARE(controller->text(), QStringLiteral("Everyone pays $30.00"));
        controller->close();
        QCOMPARE(m_order.first(), QStringLiteral("none"));
    }
};

QTEST_MAIN(ShareSheetTest)
#include "ShareSheetTest.moc"
