#pragma once

#include <QFont>
#include <QList>
#include <QStringList>

/// The fonts of the window as it is first seen, at the natural size of texts: the desktop's wish
/// for another one is not known as early as they are needed.
[[nodiscard]] QList<QFont> firstFonts();

/// Makes a font usable by the calling thread. The font library searches all fonts for it, once for
/// each style and size.
void loadFont(const QFont& font);

/// The names of the icons that are seen then, in their natural size.
[[nodiscard]] QStringList firstIcons();
