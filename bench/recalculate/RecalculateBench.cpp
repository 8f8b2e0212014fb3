#include "ContentView.h"
#include "PersistentContainer.h"
#include "UserDefaults.h"

#include <QGuiApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <sys/resource.h>

#include <cstdlib>

// What one key stroke costs before the window is drawn: reading the text, trying and computing the
// split, formatting what the panel shows, and writing all preferences.

namespace {

/// Times that this thread gave up the processor to wait, for a disk or a lock, say.
long waitsOfThisThread()
{
    rusage usage {};
    getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_nvcsw;
}

struct Calculator {
    QTemporaryDir folder;
    UserDefaults store { folder.filePath(QStringLiteral("preferences.ini")) };
    UserSettings settings { store };
    // Not opened: nothing is saved here.
    std::shared_ptr<NSPersistentContainer> bills = std::get<0>(PersistentContainer::get(false));
    ContentView view { settings, bills->viewContext() };
};

void keyStroke(benchmark::State& state)
{
    Calculator calculator;
    calculator.settings.setTipFromEveryone(true);
    QObject::connect(&calculator.view, &ContentView::resultsChanged, [&calculator] {
        benchmark::DoNotOptimize(calculator.view.totalText());
        benchmark::DoNotOptimize(calculator.view.tipText());
        benchmark::DoNotOptimize(calculator.view.shareText());
    });
    const QString texts[] { QStringLiteral("1"), QStringLiteral("13"), QStringLiteral("133"),
        QStringLiteral("133."), QStringLiteral("133.5") };
    std::size_t stroke = 0;
    const long waitsBefore = waitsOfThisThread();
    for (auto _ : state)
        calculator.view.billEdited(texts[stroke++ % std::size(texts)]);
    state.counters["waits"] = static_cast<double>(waitsOfThisThread() - waitsBefore);
}

void recalculation(benchmark::State& state)
{
    Calculator calculator;
    calculator.settings.setTipFromEveryone(true);
    double bill = 100.0;
    for (auto _ : state)
        calculator.settings.setBill(bill += 0.01);
}

void splitAlone(benchmark::State& state)
{
    SplitInputs inputs { .bill = 133.5, .people = 4, .service = 1, .serviceGood = 5 };
    for (auto _ : state)
        benchmark::DoNotOptimize(split(inputs));
}

} // namespace

BENCHMARK(splitAlone);
BENCHMARK(recalculation);
BENCHMARK(keyStroke);

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}
