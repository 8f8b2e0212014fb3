#pragma once

#include <QList>
#include <QQuickItem>
#include <QRectF>
#include <QString>
#include <QStringList>

#include <vector>

/// Something that is drawn on a screen: a text, an icon, or a control as a whole.
struct Drawn {
    enum class Kind { Text, Figure, Icon, Control };

    Kind kind = Kind::Text;
    QString text; ///< what it says, or what it is
    QRectF place; ///< where it is painted, in points of the window
    bool cut = false; ///< whether its text ends in dots, or leaves its own item
    double size = 1.0; ///< how large it is drawn, beside what was asked for
    const QQuickItem* item = nullptr;
};

/// An item and all below it that is seen, in their order.
[[nodiscard]] QList<const QQuickItem*> shownIn(const QQuickItem& root);

/// Whether an item shows words or figures: a text, an amount or a field that is not empty.
[[nodiscard]] bool showsText(const QQuickItem& item);

/// All that is drawn of an item and below it, but for what is scrolled out of sight, in the order
/// of the items.
[[nodiscard]] std::vector<Drawn> drawnIn(const QQuickItem& root);

/// What is wrong with how they are laid out: texts that are cut, drawn much smaller than they
/// should be, or painted outside of what holds them, and things that lie over each other. Texts
/// that begin with one of these may be cut: they are of any length, and told whole elsewhere.
[[nodiscard]] QStringList faultsOf(const std::vector<Drawn>& drawn, const QStringList& ofAnyLength);

/// What does not stand where a mirror would show it. Both must be of the same screen.
[[nodiscard]] QStringList unmirrored(
    const std::vector<Drawn>& leftToRight, const std::vector<Drawn>& rightToLeft, double width);
