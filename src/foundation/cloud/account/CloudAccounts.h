#pragma once

#include "CloudAccount.h"
#include "PasswordRequest.h"

#include <QDBusConnection>

#include <chrono>
#include <memory>

namespace mirror {

class CloudIniFile;
class KeyringWatch;
class OnlineAccounts;

enum class AccountState {
    Unknown, ///< the first answer has not come yet
    NoAccount,
    NeedsAttention, ///< there is one, but not all it needs: problem() says what
    Available, ///< an account and, as far as is known without unlocking anything, its password
};

/// How CloudAccounts asks.
struct AccountManners {
    QString iniFile; ///< the full path of cloud.ini; see CloudAccounts::standardIniFile()
    std::shared_ptr<Cancellation> cancellation = std::make_shared<Cancellation>();
    std::chrono::milliseconds answerLimit = std::chrono::seconds(5); ///< for a service's answer
    /// For a password: the user may have to unlock something.
    std::chrono::milliseconds passwordLimit = std::chrono::seconds(25);
    std::optional<QDBusConnection> bus; ///< where there is none, the session's
};

/// The user's account with a WebDAV server: the one in GNOME's online accounts, otherwise the one
/// in cloud.ini with its password in the keyring. Follows what becomes of it.
///
/// It is used on one thread with an event loop, not the main thread: password() waits. Before
/// start() it costs nothing. No password is kept here, is part of a sentence, or is printed.
class CloudAccounts : public QObject {
    Q_OBJECT

public:
    /// "cloud.ini" beside the user's preferences.
    [[nodiscard]] static QString standardIniFile();

    explicit CloudAccounts(AccountManners manners, QObject* parent = nullptr);
    ~CloudAccounts() override;

    /// Begins to look, once. changed() tells of the first answer.
    void start();

    [[nodiscard]] AccountState state() const { return m_shown.state; }

    /// Also while it needs attention, where it is known by then.
    [[nodiscard]] const std::optional<CloudAccount>& account() const { return m_shown.account; }

    /// One sentence for the user, without secrets: what has to be done, or, where the account is
    /// available, what was ignored. Empty where there is nothing to say.
    [[nodiscard]] const QString& problem() const { return m_shown.problem; }

    /// Asks the desktop or the keyring, which may ask the user to unlock it, and waits, delivering
    /// no events: for passwordLimit, or until the cancellation. Never empty.
    /// Fails with Cancelled; with NotFound where there is no account, or none is known yet;
    /// otherwise with Unauthorised: the account needs attention then, and there is no use in asking
    /// again before changed().
    [[nodiscard]] Outcome<QString> password();

    /// The server did not take what password() gave (401, 403). The account needs attention until
    /// other credentials are there; the desktop, where it keeps them, is told once.
    void refused();

Q_SIGNALS:
    /// The account, the state or the credentials changed, or may have. Never from within a call.
    void changed();

private:
    enum class Source { None, Online, Ini };

    /// Why the password is not asked for.
    enum class Block {
        None,
        Absent, ///< the keyring told that it has none
        Failed, ///< it was asked for in vain
        Refused, ///< it was not the right one
    };

    struct Shown {
        AccountState state = AccountState::Unknown;
        std::optional<CloudAccount> account;
        QString problem;

        friend bool operator==(const Shown&, const Shown&) = default;
    };

    void onIniChanged();
    void onKeyringLooked();
    void setBlock(Block block, const QString& sentence = QString());
    void renew();
    void probe();
    void compare(const QByteArray& found);
    void update();
    void chooseSource();
    void show();
    void announce();
    [[nodiscard]] Shown shown() const;
    [[nodiscard]] PasswordSource passwordSource() const;
    [[nodiscard]] QByteArray mark(const QString& password) const;

    const AccountManners m_manners;
    const QByteArray m_salt;
    OnlineAccounts* m_online = nullptr; // these three from start() on
    CloudIniFile* m_ini = nullptr;
    KeyringWatch* m_keyring = nullptr;
    Source m_source = Source::None;
    QString m_onlinePath;
    std::optional<CloudAccount> m_account; // the source's
    QString m_remark; // the source's problem
    int m_choices = 0; // of source or account so far
    Block m_block = Block::None;
    QString m_blockSentence;
    QByteArray m_given; // the mark of the password that was given last
    Shown m_shown;
    bool m_isAnnounced = false;
};

} // namespace mirror
