#include "Diagnostics.h"
#include "DeathTest.h"

#include <QTest>

#include <unistd.h>

class DiagnosticsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aFatalErrorIsPrintedOnStandardErrorAndEndsTheProcessAbnormally()
    {
        const Death death = deathOf([] { fatalError("No description found"); });

        QVERIFY(death.aborted);
        QCOMPARE(death.message, QByteArray("No description found\n"));
    }

    void aDiagnosticLineGoesToStandardOutputOnly()
    {
        const Death noDeath = deathOf([] {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            close(STDERR_FILENO);
            printDiagnostic("--> Cloud?");
        });

        QVERIFY(!noDeath.aborted);
        QCOMPARE(noDeath.message, QByteArray("--> Cloud?\n"));
    }
};

QTEST_GUILESS_MAIN(DiagnosticsTest)
#include "DiagnosticsTest.moc"
