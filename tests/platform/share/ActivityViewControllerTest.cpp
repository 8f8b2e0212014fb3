#include "ActivityTypes.h"
#include "FakeActivity.h"
#include "NoDesktop.h"
#include "UIActivityViewController.h"

#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QGuiApplication>
#include <QPointer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString text = QStringLiteral("Everyone pays 30,00 €");

/// What a completion was called with.
struct Outcome {
    std::optional<ActivityType> type;
    bool completed;
    std::optional<QVariantList> returnedItems;
    std::optional<ActivityError> error;
};

} // namespace

/// A sheet on a desktop that has no bus: what needs none is offered.
class ActivityViewControllerTest : public QObject {
    Q_OBJECT

private:
    using Controller = UIActivityViewController;

    QTemporaryDir m_home;
    std::shared_ptr<FakeActivity> m_activity;
    std::unique_ptr<Controller> m_controller;
    QList<Outcome> m_outcomes;

    void make(ActivityItem item, const std::optional<Activities>& activities)
    {
        m_controller = std::make_unique<Controller>(ActivityItems { std::move(item) }, activities);
        m_outcomes.clear();
        m_controller->setCompletionHandler(
            [this](const std::optional<ActivityType>& type, bool completed,
                const std::optional<QVariantList>& items,
                const std::optional<ActivityError>& error) {
                m_outcomes.append({ type, completed, items, error });
            });
    }

    void open()
    {
        m_controller->open();
        m_activity->sayAvailable();
    }

    [[nodiscard]] QList<Activity*> offered() const
    {
        QList<Activity*> all;
        for (const ActivityModel* group : m_controller->groups()) {
            for (int row = 0; row < group->rowCount(); ++row)
                all.append(
                    group->data(group->index(row), ActivityModel::ActivityRole).value<Activity*>());
        }
        return all;
    }

    [[nodiscard]] QStringList offeredTypes() const
    {
        QStringList types;
        for (const Activity* activity : offered())
            types.append(activity->activityType());
        return types;
    }

    [[nodiscard]] Activity* offeredOf(const ActivityType& type) const
    {
        for (Activity* activity : offered()) {
            if (activity->activityType() == type)
                return activity;
        }
        return nullptr;
    }

private Q_SLOTS:
    void initTestCase() { useNoDesktop(m_home.path()); }

    void init()
    {
        m_activity = std::make_shared<FakeActivity>(QStringLiteral("own"));
        make({ .text = text }, Activities { m_activity });
    }

    void cleanup() { m_controller.reset(); }

    // What is offered

    void nothingIsAskedBeforeTheSheetOpens()
    {
        QCOMPARE(offeredTypes(), QStringList());
        QCOMPARE(m_activity->asked, QStringList());
    }

    void whatNeedsNoBusIsOfferedAtOnce()
    {
        m_controller->open();

        QCOMPARE(offeredTypes(), QStringList({ activityType::copy, activityType::qrCode }));
    }

    void anExcerptCanBeCopiedAlone()
    {
        make({ .text = text,
                 .excerpt = ActivityItem::Excerpt { .title = QStringLiteral("Copy the amount"),
                     .text = QStringLiteral("30,00 €") } },
            std::nullopt);
        m_controller->open();

        QCOMPARE(offeredTypes(),
            QStringList({ activityType::copy, activityType::copyExcerpt, activityType::qrCode }));
        Activity* const activity = offeredOf(activityType::copyExcerpt);
        QCOMPARE(activity->title(), QStringLiteral("Copy the amount"));
        QCOMPARE(activity->detail(), QStringLiteral("30,00 €"));
        m_controller->choose(activity);
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("30,00 €"));
        QCOMPARE(m_outcomes.size(), 1);
        QCOMPARE(*m_outcomes.first().type, activityType::copyExcerpt);
    }

    void anActivityThatAnswersLateTakesItsPlace()
    {
        const auto second = std::make_shared<FakeActivity>(QStringLiteral("second"));
        make({ .text = text }, Activities { m_activity, second });
        QList<ActivityModel*> groups = m_controller->groups();
        const QAbstractItemModelTester tester(
            groups.last(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        m_controller->open();

        second->sayAvailable();
        QCOMPARE(offeredTypes().last(), QStringLiteral("second"));
        m_activity->sayAvailable();

        QCOMPARE(offeredTypes().mid(2),
            QStringList({ m_activity->activityType(), QStringLiteral("second") }));
        QCOMPARE(m_activity->asked, QStringList(text));
    }

    void whoSaysTwiceThatItIsAvailableIsOfferedOnce()
    {
        open();
        m_activity->sayAvailable();

        QCOMPARE(offeredTypes().count(m_activity->activityType()), 1);
    }

    void anExcludedTypeIsNeitherAskedNorOffered()
    {
        m_controller->setExcludedActivityTypes(
            QList<ActivityType> { m_activity->activityType(), activityType::copy });
        open();

        QCOMPARE(offeredTypes(), QStringList(activityType::qrCode));
        QCOMPARE(m_activity->asked, QStringList());
    }

    void withoutExcludedTypesEverythingIsOffered()
    {
        QVERIFY(!m_controller->excludedActivityTypes());
        open();

        QCOMPARE(offeredTypes(),
            QStringList({ activityType::copy, activityType::qrCode, m_activity->activityType() }));
    }

    void aTextThatIsTooLongForACodeHasNone()
    {
        make({ .text = QString(5000, QLatin1Char('x')) }, std::nullopt);
        m_controller->open();

        QCOMPARE(offeredTypes(), QStringList(activityType::copy));
    }

    void severalItemsAreSharedAsOneText()
    {
        Controller controller(
            { { .text = QStringLiteral("one") }, { .text = QStringLiteral("two") } });

        QCOMPARE(controller.text(), QStringLiteral("one\n\ntwo"));
        QCOMPARE(controller.activityItems().size(), 2);
    }

    // What comes of it

    void copyingPutsTheTextOnTheClipboardAndIsCompleted()
    {
        QGuiApplication::clipboard()->setText(QStringLiteral("before"));
        open();

        m_controller->choose(offeredOf(activityType::copy));

        QCOMPARE(QGuiApplication::clipboard()->text(), text);
        QCOMPARE(m_controller->state(), Controller::Finished);
        QCOMPARE(m_outcomes.size(), 1);
        QCOMPARE(*m_outcomes.first().type, activityType::copy);
        QCOMPARE(m_outcomes.first().completed, true);
        QVERIFY(!m_outcomes.first().returnedItems);
        QVERIFY(!m_outcomes.first().error);
    }

    void closingTheSheetIsNotCompletedAndHasNoType()
    {
        open();

        m_controller->close();

        QCOMPARE(m_controller->state(), Controller::Finished);
        QCOMPARE(m_outcomes.size(), 1);
        QVERIFY(!m_outcomes.first().type);
        QCOMPARE(m_outcomes.first().completed, false);
        QVERIFY(!m_outcomes.first().returnedItems);
        QVERIFY(!m_outcomes.first().error);
    }

    void whatAnActivityReturnsIsHandedOn()
    {
        open();
        m_controller->choose(m_activity.get());
        QCOMPARE(m_activity->performed, QStringList(text));
        QCOMPARE(m_controller->state(), Controller::Performing);
        QCOMPARE(m_outcomes.size(), 0);

        m_activity->sayFinished(
            { .completed = true, .returnedItems = QVariantList { QStringLiteral("receipt") } });

        QCOMPARE(m_outcomes.size(), 1);
        QCOMPARE(*m_outcomes.first().type, m_activity->activityType());
        QCOMPARE(m_outcomes.first().completed, true);
        QCOMPARE(*m_outcomes.first().returnedItems, QVariantList { QStringLiteral("receipt") });
    }

    void anActivityThatTheUserCancelsIsNotCompletedAndHasItsType()
    {
        open();
        m_controller->choose(m_activity.get());

        m_activity->sayFinished({});

        QCOMPARE(m_outcomes.size(), 1);
        QCOMPARE(*m_outcomes.first().type, m_activity->activityType());
        QCOMPARE(m_outcomes.first().completed, false);
        QVERIFY(!m_outcomes.first().error);
    }

    void aFailureIsShownAndReportedOnceItWasRead()
    {
        open();
        m_controller->choose(m_activity.get());

        m_activity->sayFinished({ .error = ActivityError { QStringLiteral("No room left.") } });
        QCOMPARE(m_controller->state(), Controller::Failed);
        QCOMPARE(m_controller->failure(), QStringLiteral("No room left."));
        QCOMPARE(m_outcomes.size(), 0);
        m_controller->close();

        QCOMPARE(m_controller->state(), Controller::Finished);
        QCOMPARE(m_outcomes.size(), 1);
        QCOMPARE(*m_outcomes.first().type, m_activity->activityType());
        QCOMPARE(m_outcomes.first().completed, false);
        QCOMPARE(m_outcomes.first().error->description, QStringLiteral("No room left."));
    }

    void closingTheSheetStopsWhatIsPerformed()
    {
        open();
        m_controller->choose(m_activity.get());

        m_controller->close();
        m_activity->sayFinished({ .completed = true });

        QCOMPARE(m_activity->stops, 1);
        QCOMPARE(m_outcomes.size(), 1);
        QCOMPARE(*m_outcomes.first().type, m_activity->activityType());
        QCOMPARE(m_outcomes.first().completed, false);
    }

    void whatFinishesWhileItIsStoppedSaysHow()
    {
        open();
        m_activity->outcomeOfStop = ActivityOutcome { .completed = true };
        m_controller->choose(m_activity.get());

        m_controller->close();

        QCOMPARE(m_outcomes.size(), 1);
        QCOMPARE(m_outcomes.first().completed, true);
    }

    void theCompletionIsCalledOnceWhateverComesAfterwards()
    {
        open();
        m_controller->choose(m_activity.get());
        m_activity->sayFinished({ .completed = true });

        m_activity->sayFinished({ .completed = true });
        m_controller->close();
        m_controller->choose(offeredOf(activityType::copy));

        QCOMPARE(m_outcomes.size(), 1);
    }

    void theSecondOfTwoQuickChoicesIsIgnored()
    {
        open();
        m_controller->choose(m_activity.get());
        m_controller->choose(offeredOf(activityType::copy));

        QCOMPARE(m_controller->chosen(), m_activity.get());
        QCOMPARE(m_outcomes.size(), 0);
    }

    void withoutACompletionTheSheetFinishesAllTheSame()
    {
        m_controller->setCompletionHandler(nullptr);
        open();

        m_controller->choose(offeredOf(activityType::copy));

        QCOMPARE(m_controller->state(), Controller::Finished);
    }

    void theCompletionComesBeforeTheSheetHears()
    {
        QStringList order;
        m_controller->setCompletionHandler([&order](const auto&, bool, const auto&, const auto&) {
            order.append(QStringLiteral("completion"));
        });
        open();
        connect(m_controller.get(), &Controller::stateChanged, this,
            [&order] { order.append(QStringLiteral("state")); });

        m_controller->close();

        QCOMPARE(order, QStringList({ QStringLiteral("completion"), QStringLiteral("state") }));
    }

    void theCompletionMayDestroyTheSheet_data()
    {
        QTest::addColumn<bool>("copies");
        QTest::newRow("which is closed") << false;
        QTest::newRow("whose activity is done") << true;
    }

    void theCompletionMayDestroyTheSheet()
    {
        QFETCH(const bool, copies);
        int completions = 0;
        m_controller->setCompletionHandler(
            [this, &completions](const auto&, bool, const auto&, const auto&) {
                ++completions;
                m_controller.reset();
            });
        open();
        const QPointer<Controller> controller(m_controller.get());

        if (copies)
            controller->choose(offeredOf(activityType::copy));
        else
            controller->close();

        QCOMPARE(completions, 1);
        QVERIFY(!controller);
    }

    void theCompletionMayDestroyTheSheetWhileItsActivityIsStopped()
    {
        int completions = 0;
        m_controller->setCompletionHandler(
            [this, &completions](const auto&, bool, const auto&, const auto&) {
                ++completions;
                m_controller.reset();
            });
        open();
        m_activity->outcomeOfStop = ActivityOutcome { .completed = true };
        m_controller->choose(m_activity.get());
        const QPointer<Controller> controller(m_controller.get());

        controller->close();

        QCOMPARE(completions, 1);
        QVERIFY(!controller);
    }

    // The page of an activity

    void theCodeIsShownUntilTheSheetIsClosedAndThenCompleted()
    {
        open();

        m_controller->choose(offeredOf(activityType::qrCode));
        QCOMPARE(m_controller->state(), Controller::Performing);
        QVERIFY(!m_controller->chosen()->page().isEmpty());
        QCOMPARE(m_controller->chosen()->property("text").toString(), text);
        m_controller->close();

        QCOMPARE(m_outcomes.size(), 1);
        QCOMPARE(*m_outcomes.first().type, activityType::qrCode);
        QCOMPARE(m_outcomes.first().completed, true);
    }

    void fromThePageOfAnActivityAnotherOneCanBeChosen()
    {
        open();
        m_controller->choose(offeredOf(activityType::qrCode));

        m_controller->goBack();
        QCOMPARE(m_controller->state(), Controller::Choosing);
        QCOMPARE(m_controller->chosen(), nullptr);
        QCOMPARE(m_outcomes.size(), 0);
        m_controller->choose(offeredOf(activityType::copy));

        QCOMPARE(m_outcomes.size(), 1);
        QCOMPARE(*m_outcomes.first().type, activityType::copy);
    }

    void goingBackStopsWhatIsPerformed()
    {
        m_activity->setPage(QStringLiteral("OwnPage.qml"));
        m_activity->outcomeOfStop = ActivityOutcome { .completed = true };
        open();
        m_controller->choose(m_activity.get());

        m_controller->goBack();

        QCOMPARE(m_activity->stops, 1);
        QCOMPARE(m_controller->state(), Controller::Choosing);
        QCOMPARE(m_outcomes.size(), 0);
    }

    void anActivityWithoutAPageIsNotGoneBackFrom()
    {
        open();
        m_controller->choose(m_activity.get());

        m_controller->goBack();

        QCOMPARE(m_controller->state(), Controller::Performing);
    }
};

QTEST_MAIN(ActivityViewControllerTest)
#include "ActivityViewControllerTest.moc"
