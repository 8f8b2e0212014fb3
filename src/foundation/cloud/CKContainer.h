#pragma once

#include "CKDatabase.h"

/// What is known of the user's account with the cloud.
enum class CKAccountStatus { CouldNotDetermine, Available, NoAccount };

/// The program's part of the user's private cloud.
class CKContainer {
public:
    struct AccountAnswer {
        CKAccountStatus status = CKAccountStatus::NoAccount;
        std::optional<CKError> error;
    };
    /// Asks for the account, on a thread of the cloud's own; may take its time.
    using AccountSource = std::function<AccountAnswer()>;

    /// The container of this program, named by "CKContainerIdentifier" in the main bundle's
    /// information dictionary.
    static const CKContainer& defaultContainer();

    explicit CKContainer(QString identifier);

    /// Whom the containers ask from now on. At first there is nobody to ask, and so no account.
    static void setAccountSource(AccountSource source);

    /// Returns at once. The completion runs later, on a thread of the cloud's own.
    void accountStatus(const std::function<void(const AccountAnswer&)>& completion) const;

    [[nodiscard]] CKDatabase privateCloudDatabase() const { return CKDatabase(m_identifier); }

private:
    QString m_identifier;
};
