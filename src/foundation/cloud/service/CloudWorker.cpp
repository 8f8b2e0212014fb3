#include "CloudWorker.h"

#include "Diagnostics.h"

#include <QScopedValueRollback>

#include <algorithm>

namespace mirror {

namespace {

constexpr auto ZoneName = "com.apple.coredata.cloudkit.zone";

CKError noAccount()
{
    return { QStringLiteral("There is no cloud account to delete the saved bills from.") };
}

CKError notNoted()
{
    return { QStringLiteral(
        "The store of the saved bills could not be used; they stay in the cloud for now.") };
}

CKError doneElsewhere()
{
    return { QStringLiteral(
        "Another copy of the program mirrors these bills, and deletes them there.") };
}

CKError isOnAgain()
{
    return { QStringLiteral(
        "Mirroring was switched on again before the saved bills were deleted.") };
}

void print(const QString& sentence) { printDiagnostic("--> Cloud: " + sentence.toStdString()); }

} // namespace

CloudWorker::CloudWorker(std::shared_ptr<Cancellation> cancellation)
    : m_cancellation(std::move(cancellation))
{
}

CloudWorker::~CloudWorker() = default;

void CloudWorker::start(const CloudSetup& setup, bool isMirrored)
{
    m_isStarted = true;
    m_triggers = std::make_unique<SyncTriggers>();
    m_setup = setup;
    m_isMirrored = isMirrored;
    m_lock = std::make_unique<FileLock>(setup.storeFile + QLatin1String("-mirror.lock"));
    AccountManners accountManners;
    accountManners.iniFile = CloudAccounts::standardIniFile();
    accountManners.cancellation = m_cancellation;
    m_accounts = std::make_unique<CloudAccounts>(accountManners);
    WebDavManners manners;
    manners.userAgent = setup.userAgent;
    manners.cancellation = m_cancellation;
    m_files = std::make_unique<AccountFileStore>(*m_accounts, manners);
    connect(m_triggers.get(), &SyncTriggers::due, this, &CloudWorker::sync);
    connect(m_accounts.get(), &CloudAccounts::changed, this,
        [this] { defer([this] { onAccountsChanged(); }); });
    m_accounts->start();
    runDeferred();
}

void CloudWorker::defer(std::function<void()> work)
{
    if (m_isSyncing || !m_isStarted)
        m_deferred.push_back(std::move(work));
    else
        work();
}

void CloudWorker::runDeferred()
{
    for (const auto& work : std::exchange(m_deferred, {}))
        work();
}

void CloudWorker::onAccountsChanged()
{
    answerStatus();
    m_isUsable = m_accounts->state() == AccountState::Available;
    settle();
    if (m_isUsable) {
        Q_EMIT accountFound();
        m_triggers->syncNow();
    } else if (!m_accounts->problem().isEmpty()) {
        tellOnce(m_accounts->problem());
    }
}

void CloudWorker::askStatus(StatusPromise answer)
{
    m_questions.push_back(std::move(answer));
    answerStatus();
}

void CloudWorker::answerStatus()
{
    if (!m_accounts || m_accounts->state() == AccountState::Unknown)
        return;
    CKContainer::AccountAnswer answer;
    if (m_accounts->state() == AccountState::Available)
        answer.status = CKAccountStatus::Available;
    else if (m_accounts->state() == AccountState::NeedsAttention)
        answer = { CKAccountStatus::CouldNotDetermine, CKError { m_accounts->problem() } };
    for (StatusPromise& question : m_questions)
        question.set_value(answer);
    m_questions.clear();
}

void CloudWorker::switchOn()
{
    defer([this] {
        m_word = Word::On;
        m_isWordNoted = false;
        failDeletions(isOnAgain());
        settle();
        m_triggers->syncNow();
    });
}

void CloudWorker::switchOff()
{
    defer([this] {
        m_word = Word::Off;
        m_isWordNoted = false;
        settle();
        m_triggers->syncNow();
    });
}

void CloudWorker::deleteZone(
    const QString& container, const CKRecordZoneID& zone, DeletionPromise answer)
{
    // Functions are copied, promises are not.
    const auto shared = std::make_shared<DeletionPromise>(std::move(answer));
    defer([this, container, zone, shared] {
        if (container != m_setup.container || zone.zoneName != QLatin1String(ZoneName))
            return shared->set_value(CKError { QStringLiteral("There is no such zone.") });
        if (m_word == Word::On) // the question was slower than the switch
            return shared->set_value(isOnAgain());
        m_deletions.push_back(std::move(*shared));
        // A switch that was noted is not noted again: it may have been done since.
        if (std::exchange(m_word, Word::Off) != Word::Off)
            m_isWordNoted = false;
        settle();
        m_triggers->syncNow();
    });
}

/// Notes the user's word, so that no end of the program loses it. It is about the account of now:
/// before that is known, it waits.
void CloudWorker::settle()
{
    if (m_accounts->state() == AccountState::Unknown)
        return;
    if (!m_isWordNoted && openSession() && !decide())
        print(QStringLiteral("The choice could not be noted; it will be tried again."));
    if (!m_isWordNoted)
        failDeletions(notNoted());
    else if (m_accounts->state() != AccountState::Available)
        failDeletions(noAccount());
}

void CloudWorker::answerDeletions(const SyncReport& report)
{
    if (report.isDeletionPending)
        return failDeletions({ report.error ? report.error->sentence
                                            : QStringLiteral("The deletion is not complete.") });
    for (DeletionPromise& deletion : std::exchange(m_deletions, {}))
        deletion.set_value(std::nullopt);
}

void CloudWorker::failDeletions(const CKError& error)
{
    for (DeletionPromise& deletion : std::exchange(m_deletions, {}))
        deletion.set_value(error);
}

void CloudWorker::setChanges(const QList<UbiquitousChange>& changes)
{
    m_changes = changes;
    if (!changes.isEmpty())
        m_triggers->noteEdit();
}

void CloudWorker::setActive(bool isActive)
{
    m_triggers->setActive(isActive);
    if (isActive)
        noteNetwork();
}

void CloudWorker::noteNetwork()
{
    if (m_isUsable && m_triggers->noteReturn() && m_session && !m_isSyncing)
        m_session->engine().forgetFailures();
}

void CloudWorker::sync()
{
    m_isDueAgain = m_isSyncing;
    if (m_isSyncing || m_accounts->state() != AccountState::Available
        || m_cancellation->isCancelled())
        return;
    {
        const QScopedValueRollback syncing(m_isSyncing, true);
        if (prepare()) {
            const SyncReport report = syncOnce();
            tell(report);
            m_triggers->noteReport(report);
            answerDeletions(report);
            if (m_isDueAgain) // since it began; what it had read by then may be old
                m_triggers->noteReturn();
            if (isMoreToDo(report))
                m_triggers->noteEdit();
        } else {
            failDeletions(m_isHolder ? notNoted() : doneElsewhere());
            if (!m_lock->problem().isEmpty())
                tellOnce(m_lock->problem());
            m_triggers->tryLater();
        }
    }
    runDeferred();
    lookForEdits();
}

/// What came while the round was at work may be behind the places where it looked.
bool CloudWorker::isMoreToDo(const SyncReport& report)
{
    if (report.result != SyncReport::Result::Done)
        return false;
    const MirrorStanding now = m_session->local().standing();
    return now.isDeletionPending || now.hasUntoldValues || now.phase == MirrorPhase::Joining
        || !m_changes.isEmpty() || m_session->hasUnpublished();
}

/// In a process that does not hold the lock, what is new waits for the one that does.
void CloudWorker::lookForEdits()
{
    if (m_isSyncing || !m_session || !m_isHolder)
        return;
    SqliteLocalMirror& local = m_session->local();
    if (local.hasLocalChanges() || std::exchange(m_standing, local.standing()) != m_standing)
        m_triggers->noteEdit();
}

/// One process of the user's is enough. The others see what it brings, and it sees what they decide
/// and tell. Nothing goes out any more after an "off" that could not be noted.
bool CloudWorker::prepare()
{
    m_isHolder = m_lock->tryLock();
    if (!openSession() || !decide())
        return false;
    if (!m_phaseAtStart)
        m_phaseAtStart = m_session->memory().phase;
    if (m_isHolder && !m_isDecided)
        m_isDecided = decideAtStart();
    exchangeValues();
    return m_isHolder;
}

bool CloudWorker::openSession()
{
    if (!m_session) {
        auto opened = MirrorSession::open(m_setup, *m_files);
        if (!opened) {
            print(opened.error().description.english());
            return false;
        }
        m_session = std::move(*opened);
        m_storeFile = std::make_unique<StoreFileWatch>();
        connect(m_storeFile.get(), &StoreFileWatch::maybeWritten, this, &CloudWorker::lookForEdits);
        m_storeFile->watch(m_setup.storeFile);
    }
    const auto& account = m_accounts->account();
    m_session->useAccount(account ? account->identity : QString());
    return true;
}

/// False where it could not be noted; then it will be tried again.
bool CloudWorker::decide()
{
    MirrorEngine& engine = m_session->engine();
    if (!m_isWordNoted) {
        if (m_word == Word::On)
            m_session->setCertificatePin({}); // whichever it is bound to, the user accepted another
        m_isWordNoted = m_word == Word::On ? engine.switchOn() : engine.deleteZone();
        m_isDecided = m_isDecided || m_isWordNoted;
    }
    return m_isWordNoted;
}

/// A start goes on with what was, unless the choice changed since: here, or on another device. It
/// means nothing any more where another process decided before this one came to it.
bool CloudWorker::decideAtStart()
{
    const MirrorPhase phase = m_session->memory().phase;
    if ((phase == MirrorPhase::Off) != (*m_phaseAtStart == MirrorPhase::Off))
        return true;
    if (m_isMirrored && phase == MirrorPhase::Off)
        return m_session->engine().switchOn();
    if (!m_isMirrored && phase != MirrorPhase::Off)
        return wasSwitchedOffHere() ? m_session->engine().deleteZone()
                                    : m_session->engine().switchOff();
    return true;
}

/// The program may have ended between the user's choice and the deletion that belongs to it.
bool CloudWorker::wasSwitchedOffHere() const
{
    return std::ranges::any_of(m_changes, [this](const UbiquitousChange& change) {
        return change.key == m_setup.choiceKey && !change.value;
    });
}

SyncReport CloudWorker::syncOnce()
{
    const QByteArray pin = m_session->certificatePin();
    m_files->use(m_accounts->account().value(), pin);
    SyncReport report = m_session->engine().sync();
    if (m_files->isOpen()) {
        noteCertificate(pin);
        if (report.error && report.error->kind == FileError::Kind::Unauthorised)
            m_accounts->refused();
    }
    m_files->close();
    m_standing = m_session->local().standing();
    Q_EMIT valuesKnown(sharedValues(m_session->local()));
    return report;
}

/// Only what this round pinned: another process may have forgotten the pin meanwhile.
void CloudWorker::noteCertificate(const QByteArray& known)
{
    const QByteArray pin = m_files->certificatePin();
    if (pin != known)
        m_session->setCertificatePin(pin);
}

void CloudWorker::exchangeValues()
{
    if (!m_changes.isEmpty() && keepChanges(m_session->local(), m_changes))
        Q_EMIT changesKept(std::exchange(m_changes, {}));
}

void CloudWorker::tell(const SyncReport& report)
{
    QString sentence;
    if (report.error && report.error->kind == FileError::Kind::Cancelled)
        return; // the program ends
    if (report.error)
        sentence = report.error->sentence;
    else if (report.phase == MirrorPhase::Deleted)
        sentence = QStringLiteral("The saved bills were deleted from the cloud on another device; "
                                  "they stay here, and are no longer mirrored.");
    else if (report.phase == MirrorPhase::OtherAccount)
        sentence = QStringLiteral("This is another account than before. To mirror the saved bills "
                                  "into it, switch syncing off and on.");
    else if (report.result == SyncReport::Result::Waiting)
        sentence = QStringLiteral("The folder of the saved bills is missing; waiting for it.");
    else if (report.records.ignoredFiles > 0)
        sentence = QStringLiteral("There are too many files in the folder of the saved bills; %1 "
                                  "of them were not read.")
                       .arg(report.records.ignoredFiles);
    else if (report.records.doubtfulFiles > 0)
        sentence = QStringLiteral("%1 of the files in the folder of the saved bills could not be "
                                  "read yet; the others are mirrored.")
                       .arg(report.records.doubtfulFiles);
    tellOnce(sentence);
}

/// Not at every poll.
void CloudWorker::tellOnce(const QString& sentence)
{
    if (std::exchange(m_told, sentence) != sentence && !sentence.isEmpty())
        print(sentence);
}

} // namespace mirror
