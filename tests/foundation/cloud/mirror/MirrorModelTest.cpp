#include "MirrorModel.h"

#include <QTest>

namespace {

quint32 numberFrom(const char* variable, quint32 otherwise)
{
    bool isNumber = false;
    const quint32 number = qEnvironmentVariable(variable).toUInt(&isNumber);
    return isNumber ? number : otherwise;
}

} // namespace

/// MIRROR_SEEDS says how many runs, MIRROR_SEED which is the first.
class MirrorModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void devicesAgreeAndLoseNothingWhateverHappens()
    {
        const quint32 first = numberFrom("MIRROR_SEED", 1);
        const quint32 count = numberFrom("MIRROR_SEEDS", 250);
        for (quint32 seed = first; seed < first + count; ++seed) {
            QString claim;
            try {
                MirrorModel model(seed);
                model.act(150);
                model.settle();
            } catch (const Violation& violation) {
                claim = violation.claim;
            }
            QVERIFY2(claim.isEmpty(),
                qPrintable(
                    QStringLiteral("MIRROR_SEED=%1: does not hold: %2").arg(seed).arg(claim)));
        }
    }
};

QTEST_APPLESS_MAIN(MirrorModelTest)
#include "MirrorModelTest.moc"
