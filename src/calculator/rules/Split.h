#pragma once

#include <QString>

#include <optional>

class UserSettings;

/// What a split is computed from. Money in currency units, rates in whole percent.
struct SplitInputs {
    double bill = 0.0;
    qint64 people = 1; ///< at least 1
    qint64 service = 0; ///< a segment index of the service picker
    qint64 serviceGood = 0;
    qint64 serviceExcellent = 0;
    bool tipFromEveryone = false; ///< each person pays the whole tip, instead of a part of it
    bool roundTip = false; ///< up, to whole units
    bool roundShare = false; ///< up, to whole units; the grand total follows

    [[nodiscard]] static SplitInputs fromSettings(const UserSettings& settings);

    /// The tip's rate for the service, in whole percent: 0 for Poor and for any unknown level.
    [[nodiscard]] qint64 tipPercent() const;
};

/// What the people at the table pay, in currency units.
struct Split {
    double sumTotal = 0.0; ///< the bill, cut to cents
    double sumTip = 0.0; ///< the tip in total
    double grandTotal = 0.0;
    double sumShare
        = 0.0; ///< for each person; cut to cents, so the shares may fall short of the total
    QString strTip; ///< "(5.00 x 4)" where everyone pays the tip, else empty

    bool operator==(const Split&) const = default;
};

/// The split, in plain binary arithmetic and in a fixed order, since every cent depends on both.
/// Nothing where a figure leaves the range that can be cut to cents, or where there is nobody.
[[nodiscard]] std::optional<Split> split(const SplitInputs& inputs);
