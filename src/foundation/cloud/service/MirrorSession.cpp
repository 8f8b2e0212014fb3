#include "MirrorSession.h"

#include "NSManagedObjectModel.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QSysInfo>

namespace mirror {

namespace {

constexpr int DaysOfHistory = 7;

quint64 random() { return QRandomGenerator::system()->generate64(); }

WallTime now() { return WallTime(std::chrono::milliseconds(QDateTime::currentMSecsSinceEpoch())); }

/// A copy of the file, elsewhere or on another machine, has another home.
QString homeOf(const QString& file)
{
    const QByteArray place
        = QSysInfo::machineUniqueId() + '\n' + QFileInfo(file).canonicalFilePath().toUtf8();
    return QString::fromLatin1(QCryptographicHash::hash(place, QCryptographicHash::Sha256).toHex());
}

} // namespace

Result<std::unique_ptr<MirrorSession>> MirrorSession::open(
    const CloudSetup& setup, FileStore& files)
{
    std::unique_ptr<MirrorSession> session(new MirrorSession(setup, files));
    if (const auto opened = session->openLocal(); !opened)
        return opened.error();
    if (!session->claim())
        return StoreError { StoreError::Code::InputOutput,
            { "What is remembered of the mirror could not be written." }, {} };
    session->m_local->forgetHistory(QDateTime::currentDateTimeUtc().addDays(-DaysOfHistory));
    return session;
}

MirrorSession::MirrorSession(const CloudSetup& setup, FileStore& files)
    : m_setup(setup)
    , m_files(files)
    , m_writer { random() }
    , m_mapping(*m_setup.model->entity(m_setup.entity), m_setup.format, m_setup.renamable)
{
}

Result<void> MirrorSession::openLocal()
{
    auto opened = SqliteLocalMirror::open(m_setup.storeFile, *m_setup.model, m_mapping);
    if (!opened)
        return opened.error();
    m_local = std::move(*opened);
    return {};
}

bool MirrorSession::claim()
{
    const QString home = homeOf(m_setup.storeFile);
    LocalTransaction claiming(*m_local);
    if (m_local->home() != home) {
        MirrorMemory memory = m_local->memory();
        memory.device = DeviceId(random());
        memory.missingListings = 0; // the other one counted them, by its clock
        m_local->setMemory(memory);
        m_local->setHome(home);
    }
    return claiming.commit();
}

void MirrorSession::useAccount(const QString& identity)
{
    const QString account = identity.isEmpty() ? memory().account : identity;
    if (m_engine && account == m_account)
        return;
    m_account = account;
    m_engine = std::make_unique<MirrorEngine>(
        MirrorWorld { m_files, *m_local, m_mapping.schema(), now, random },
        MirrorSetup {
            { m_setup.container + QLatin1Char('/') }, account, m_setup.readme, m_writer, {} });
}

bool MirrorSession::hasUnpublished()
{
    LocalTransaction reading(*m_local);
    const bool isAny = m_local->memory().phase == MirrorPhase::Mirroring
        && !m_local->records().unpublished({}, 1).empty();
    return reading.commit() && isAny;
}

MirrorMemory MirrorSession::memory()
{
    LocalTransaction reading(*m_local);
    MirrorMemory memory = m_local->memory();
    return reading.commit() ? memory : MirrorMemory();
}

QByteArray MirrorSession::certificatePin()
{
    LocalTransaction reading(*m_local);
    const CertificatePin pin = m_local->certificatePin();
    return reading.commit() && pin.account == m_account ? pin.sha256 : QByteArray();
}

void MirrorSession::setCertificatePin(const QByteArray& pin)
{
    LocalTransaction writing(*m_local);
    m_local->setCertificatePin({ m_account, pin });
    (void)writing.commit(); // else the first certificate seen next time is pinned
}

} // namespace mirror
