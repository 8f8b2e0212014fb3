#pragma once

#include <QByteArray>
#include <QList>
#include <QMargins>
#include <QPoint>
#include <QRect>
#include <QSize>

#include <optional>

/// Where a window stands, and how large it is, when it is not maximised; in points.
struct WindowGeometry {
    QSize size {};
    std::optional<QPoint> place {}; ///< of the upper left corner inside the frame, if it is known
    QMargins frame {}; ///< what the window manager draws around it
    bool isMaximised = false;

    friend bool operator==(const WindowGeometry&, const WindowGeometry&) = default;
};

/// The text of a file, which people can read, too.
[[nodiscard]] QByteArray textOf(const WindowGeometry& geometry);

/// Nothing where the text says no size that a window can have. A place that none can have, or half
/// of one, is left out, and so is whatever else is not understood.
[[nodiscard]] std::optional<WindowGeometry> windowGeometryFrom(const QByteArray& text);

/// How a window is shown that was last seen so. It stands with its frame wholly on the screen that
/// it was on for the most part, or in the middle of the first one if on none; where its place is
/// not known, it fits the roomiest one. It becomes smaller where that is needed, but never smaller
/// than its least size. The screens are those that there are now, without panels and the like, the
/// main one first.
[[nodiscard]] WindowGeometry restored(
    const WindowGeometry& geometry, const QList<QRect>& screens, QSize leastSize);
