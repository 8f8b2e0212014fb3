#pragma once

#include "WebDavAccount.h"

#include <QString>
#include <QUrl>

#include <optional>

namespace mirror {

/// The user's storage, as the desktop's online accounts or cloud.ini name it. No password is in it.
struct CloudAccount {
    /// One folder of one user, whoever names it: the same account that moved from cloud.ini to the
    /// desktop's settings is the same. Stable across starts.
    QString identity;
    QUrl root; ///< https, or http to this machine alone; ends in a slash, without a user part
    QString user; ///< without a colon, which Basic authentication cannot carry
    WebDavAccount::SelfSigned selfSigned = WebDavAccount::SelfSigned::Refuse;

    friend bool operator==(const CloudAccount&, const CloudAccount&) = default;
};

/// What a place where accounts are set up holds.
struct AccountFinding {
    std::optional<CloudAccount> account;
    /// One sentence without secrets: why there is none that can be used, or, beside an account,
    /// what was ignored.
    QString problem;

    friend bool operator==(const AccountFinding&, const AccountFinding&) = default;
};

} // namespace mirror
