#include "ContentView.h"
#include "HistoryView.h"
#include "ShownApp.h"
#include "UserSettings.h"
#include "VexiloApp.h"

#include <QFont>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QTest>

#include <algorithm>
#include <cmath>

namespace {

/// A text that is seen, and how it is to be set: its size in points at the natural size of texts.
struct Set {
    QString text;
    int size;
    bool bold = false;
    bool italic = false;
};

bool operator==(const Set& a, const Set& b)
{
    return a.text == b.text && a.size == b.size && a.bold == b.bold && a.italic == b.italic;
}

/// The texts below the item, in the order of the items.
QList<Set> textsIn(const QQuickItem& root)
{
    QList<Set> texts;
    for (const QQuickItem* const item : shownIn(root)) {
        const auto font = item->property("font").value<QFont>();
        if (showsText(*item))
            texts.append({ item->property("text").toString(), font.pixelSize(), font.bold(),
                font.italic() });
    }
    return texts;
}

QStringList iconsIn(const QQuickItem& root)
{
    QStringList names;
    for (const QQuickItem* const item : shownIn(root)) {
        if (item->inherits("Icon"))
            names.append(item->property("name").toString());
    }
    return names;
}

} // namespace

/// Which icons the screens show, and how large and how their texts are set.
class TypeTest : public QObject {
    Q_OBJECT

private:
    ShownApp m_shown;

    void expectSet(const QList<Set>& wanted)
    {
        const QList<Set> texts = textsIn(m_shown.top());
        for (const Set& one : wanted)
            QVERIFY2(texts.contains(one), qPrintable(one.text));
    }

    void showIcons(const QStringList& wanted)
    {
        const QStringList names = iconsIn(m_shown.top());
        auto from = names.begin();
        for (const QString& name : wanted) {
            from = std::find(from, names.end(), name);
            QVERIFY2(from != names.end(),
                qPrintable(name + QStringLiteral(" in ") + names.join(QLatin1Char(' '))));
            ++from;
        }
    }

private Q_SLOTS:
    void initTestCase() { m_shown.begin(); }
    void cleanupTestCase() { m_shown.end(); }
    void init()
    {
        UserSettings::shared().setRoundTip(true);
        UserSettings::shared().setRoundShare(true);
    }
    void cleanup() { m_shown.close(); }

    void theCalculatorIsSetInItsSizes()
    {
        m_shown.rest();

        expectSet({ { QStringLiteral("Bill to Split"), 26 }, { QStringLiteral("$"), 28, true },
            { QStringLiteral("133.5"), 26, true }, { QStringLiteral("4"), 24, true },
            { QStringLiteral("Excellent"), 18, false, true }, { QStringLiteral("TOTAL"), 24 },
            { m_shown.view().totalText(), 26, true }, { m_shown.view().tipText(), 24, true },
            { m_shown.view().shareText(), 24, true } });
    }

    void theCalculatorShowsItsIconsInTheirOrder()
    {
        m_shown.rest();

        showIcons({ QStringLiteral("gearshape"), QStringLiteral("arrow.uturn.backward"),
            QStringLiteral("doc.on.doc"), QStringLiteral("square.and.arrow.up"),
            QStringLiteral("list.bullet.rectangle.portrait"),
            QStringLiteral("square.and.arrow.down"), QStringLiteral("minus"),
            QStringLiteral("plus"), QStringLiteral("hand.thumbsdown.fill"),
            QStringLiteral("hand.thumbsup"), QStringLiteral("trophy"), QStringLiteral("creditcard"),
            QStringLiteral("gift.fill"), QStringLiteral("arrow.up.circle"),
            QStringLiteral("person.fill"), QStringLiteral("arrow.up.circle") });
    }

    void theLastActionsAreCalledByNameInTheLeastWindow()
    {
        m_shown.resize(500);
        const auto back = qScopeGuard([this] { m_shown.resize(540); });

        const QList<Set> texts = textsIn(m_shown.top());
        for (const QString& name : { QStringLiteral("History"), QStringLiteral("Save") }) {
            QVERIFY2(std::any_of(texts.begin(), texts.end(),
                         [&name](const Set& one) { return one.text == name; }),
                qPrintable(name));
        }
    }

    void anArrowIsShownOnlyWhereItsAmountIsRoundedUp()
    {
        const QString arrow = QStringLiteral("arrow.up.circle");
        UserSettings::shared().setRoundTip(false);
        m_shown.rest();
        showIcons({ QStringLiteral("person.fill"), arrow });
        QCOMPARE(iconsIn(m_shown.top()).count(arrow), 1);

        UserSettings::shared().setRoundTip(true);
        UserSettings::shared().setRoundShare(false);
        m_shown.rest();
        showIcons({ QStringLiteral("gift.fill"), arrow, QStringLiteral("person.fill") });
        QCOMPARE(iconsIn(m_shown.top()).count(arrow), 1);
    }

    void theThemeThatIsChosenHasTheMark()
    {
        const auto back = qScopeGuard([] { UserSettings::shared().setTheme(0); });
        for (const int theme : { 2, 1, 0 }) {
            UserSettings::shared().setTheme(theme);
            ShownApp::set(m_shown.view(), "showSettings");
            m_shown.rest();
            QCOMPARE(iconsIn(m_shown.top()).count(QStringLiteral("checkmark")), 1);
            // The mark stands in the row of its theme, below the texts of those before it.
            const QString chosen = QStringList { QStringLiteral("System"), QStringLiteral("Light"),
                QStringLiteral("Dark") }
                                       .at(theme);
            double markY = 0.0;
            double textY = -1.0;
            for (const QQuickItem* const item : shownIn(m_shown.top())) {
                const double middle = item->mapToScene({ 0.0, item->height() / 2.0 }).y();
                if (item->property("name") == QLatin1String("checkmark"))
                    markY = middle;
                if (item->inherits("QQuickText") && item->property("text") == chosen)
                    textY = middle;
            }
            QVERIFY2(std::abs(markY - textY) < 5.0, qPrintable(chosen));
            m_shown.close();
        }
    }

    void aSheetsTitleIsLargeAndBold()
    {
        ShownApp::set(m_shown.view(), "showSettings");
        m_shown.rest();

        expectSet({ { QStringLiteral("Settings"), 28, true } });
    }

    void theListAndAPageAreSetInTheirSizes()
    {
        m_shown.openList();
        m_shown.rest();
        HistoryView& history = *m_shown.app().historyView();
        history.choose(0);
        m_shown.rest();
        const QString title = history.detailTitle();

        expectSet({ { title, 24, true }, { QStringLiteral("Bill"), 18, true },
            { QStringLiteral("$133.50"), 18, true },
            { history.detail()->savedOn(), 14, false, true } });
        showIcons({ QStringLiteral("chevron.left"), QStringLiteral("pencil") });

        history.unchoose();
        m_shown.rest();
        showIcons({ QStringLiteral("calendar.badge.clock"), QStringLiteral("trash") });
        const QList<Set> texts = textsIn(m_shown.top());
        const QRegularExpression day(QStringLiteral("^\\w{3} \\d\\d \\w{3} \\d{4}$"));
        QVERIFY(std::any_of(texts.begin(), texts.end(), [&day](const Set& one) {
            return day.match(one.text).hasMatch() && one.size == 16 && !one.bold;
        }));
    }
};

int main(int argc, char* argv[])
{
    // The bus has to be there before the application.
    TypeTest test;
    const QGuiApplication application(argc, argv);
    return QTest::qExec(&test, argc, argv);
}

#include "TypeTest.moc"
