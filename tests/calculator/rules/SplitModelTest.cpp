#include "Split.h"

#include <QProcess>
#include <QTest>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>

namespace {

constexpr int splits = 100'000;

SplitInputs randomInputs(std::mt19937_64& random)
{
    const auto pick = [&random](qint64 least, qint64 most) {
        return std::uniform_int_distribution<qint64>(least, most)(random);
    };
    // Amounts as people have them, in cents; amounts with more digits; and any double at all.
    double bill = static_cast<double>(pick(0, 100'000'00)) / 100.0;
    if (pick(0, 3) == 0)
        bill = std::uniform_real_distribution<double>(-1e4, 1e4)(random);
    if (pick(0, 9) == 0)
        bill = std::ldexp(bill, static_cast<int>(pick(-30, 30)));
    return {
        .bill = bill,
        .people = pick(0, 19) == 0 ? pick(1, 1'000'000) : pick(1, 20),
        .service = pick(-1, 3),
        .serviceGood = pick(0, 100),
        .serviceExcellent = pick(0, 100),
        .tipFromEveryone = pick(0, 1) == 1,
        .roundTip = pick(0, 1) == 1,
        .roundShare = pick(0, 1) == 1,
    };
}

QByteArray request(const SplitInputs& in)
{
    char line[128];
    const int size = std::snprintf(line, sizeof line, "%a %lld %lld %lld %lld %d %d %d\n", in.bill,
        in.people, in.service, in.serviceGood, in.serviceExcellent, in.tipFromEveryone, in.roundTip,
        in.roundShare);
    return { line, size };
}

Split fromAnswer(const QByteArray& line)
{
    const QList<QByteArray> words = line.split(' ');
    const auto figure
        = [&words](int index) { return std::strtod(words.value(index).constData(), nullptr); };
    return { .sumTotal = figure(0),
        .sumTip = figure(1),
        .grandTotal = figure(2),
        .sumShare = figure(3),
        .strTip = QString::fromLatin1(words.mid(4).join(' ')) };
}

} // namespace

class SplitModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void randomSplitsEqualAnIndependentModelBitForBit()
    {
        std::random_device device;
        const quint64 seed = (static_cast<quint64>(device()) << 32U) | device();
        std::mt19937_64 random(seed);
        QList<SplitInputs> inputs;
        QByteArray requests;
        while (inputs.size() < splits) {
            const SplitInputs next = randomInputs(random);
            if (!split(next))
                continue;
            inputs.append(next);
            requests += request(next);
        }

        QProcess model;
        model.start(QStringLiteral("/usr/bin/python3"), { QStringLiteral(SPLIT_MODEL) });
        QVERIFY(model.waitForStarted());
        model.write(requests);
        model.closeWriteChannel();
        QVERIFY(model.waitForFinished(100'000));
        QCOMPARE(model.exitCode(), 0);
        const QList<QByteArray> answers = model.readAllStandardOutput().split('\n');

        QCOMPARE(answers.size(), splits + 1);
        for (qsizetype i = 0; i < inputs.size(); ++i) {
            const Split expected = fromAnswer(answers.at(i));
            const QByteArray context
                = "seed " + QByteArray::number(seed) + ": " + request(inputs.at(i)) + answers.at(i);
            QVERIFY2(split(inputs.at(i)) == expected, context.constData());
        }
    }
};

QTEST_GUILESS_MAIN(SplitModelTest)
#include "SplitModelTest.moc"
