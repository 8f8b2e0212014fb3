#pragma once

#include "CloudSetup.h"
#include "MirrorEngine.h"
#include "SqliteLocalMirror.h"

namespace mirror {

/// The engine with all that it works on: one store file and, from useAccount() on, one account.
class MirrorSession {
public:
    /// Opens what is remembered in the store file; draws a device identity where there is none, or
    /// where the file was copied here from elsewhere. The files must outlive this.
    static Result<std::unique_ptr<MirrorSession>> open(const CloudSetup& setup, FileStore& files);

    /// The engine works for this account from now on; empty for the one that it worked for last.
    void useAccount(const QString& identity);
    /// From useAccount() on.
    [[nodiscard]] MirrorEngine& engine() { return *m_engine; }
    [[nodiscard]] SqliteLocalMirror& local() { return *m_local; }

    /// Whether a record waits to be published that could be. A change that is taken in while a sync
    /// is at work may be behind the place where it reads on.
    [[nodiscard]] bool hasUnpublished();
    /// What is remembered; as if there were nothing where it cannot be read.
    [[nodiscard]] MirrorMemory memory();
    /// Of the account in use; empty where it is bound to no certificate.
    [[nodiscard]] QByteArray certificatePin();
    void setCertificatePin(const QByteArray& pin);

private:
    MirrorSession(const CloudSetup& setup, FileStore& files);

    [[nodiscard]] Result<void> openLocal();
    [[nodiscard]] bool claim();

    CloudSetup m_setup;
    FileStore& m_files;
    WriterId m_writer;
    RecordMapping m_mapping;
    std::unique_ptr<SqliteLocalMirror> m_local;
    QString m_account;
    std::unique_ptr<MirrorEngine> m_engine;
};

} // namespace mirror
