#pragma once

#include "Appearance.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

// Type sizes and spacing of the screens, in points (device-independent pixels).
inline constexpr double fontSize1 = 18.0;
inline constexpr double fontSize2 = 22.0;
inline constexpr double fontSize3 = 24.0;
inline constexpr double bodyFontSize = 15.0;
inline constexpr double smallFontSize = 14.0;
inline constexpr double lineSpace = 10.0;

/// The look, as views bind to it: colours of the window's colour scheme, sizes, times. The sizes of
/// texts, and what must grow with them, follow the desktop's text scale.
class Theme : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool dark READ dark NOTIFY changed)
    Q_PROPERTY(bool highContrast READ highContrast NOTIFY changed)
    /// Whether the user's script runs from right to left, and the layout with it.
    Q_PROPERTY(bool rightToLeft READ rightToLeft CONSTANT)
    Q_PROPERTY(QColor page READ page NOTIFY changed)
    Q_PROPERTY(QColor card READ card NOTIFY changed)
    Q_PROPERTY(QColor line READ line NOTIFY changed)
    Q_PROPERTY(QColor text READ text NOTIFY changed)
    Q_PROPERTY(QColor softText READ softText NOTIFY changed)
    Q_PROPERTY(QColor accentText READ accentText NOTIFY changed)
    Q_PROPERTY(QColor controlFill READ controlFill NOTIFY changed)
    Q_PROPERTY(QColor controlBorder READ controlBorder NOTIFY changed)
    Q_PROPERTY(QColor controlEdge READ controlEdge NOTIFY changed)
    Q_PROPERTY(QColor knob READ knob NOTIFY changed)
    Q_PROPERTY(QColor knobIcon READ knobIcon NOTIFY changed)
    Q_PROPERTY(QColor on READ on NOTIFY changed)
    Q_PROPERTY(QColor onBorder READ onBorder NOTIFY changed)
    Q_PROPERTY(QColor onText READ onText NOTIFY changed)
    Q_PROPERTY(QColor thumb READ thumb NOTIFY changed)
    Q_PROPERTY(QColor thumbOff READ thumbOff NOTIFY changed)
    Q_PROPERTY(QColor thumbPressed READ thumbPressed NOTIFY changed)
    Q_PROPERTY(QColor thumbHovered READ thumbHovered NOTIFY changed)
    Q_PROPERTY(QColor focus READ focus NOTIFY changed)
    Q_PROPERTY(QColor invalid READ invalid NOTIFY changed)
    Q_PROPERTY(QColor pressed READ pressed NOTIFY changed)
    Q_PROPERTY(QColor hovered READ hovered NOTIFY changed)
    Q_PROPERTY(QColor dim READ dim NOTIFY changed)
    Q_PROPERTY(double disabledOpacity MEMBER m_disabledOpacity CONSTANT)
    Q_PROPERTY(double fontSize1 READ textFontSize1 NOTIFY changed)
    Q_PROPERTY(double fontSize2 READ textFontSize2 NOTIFY changed)
    Q_PROPERTY(double fontSize3 READ textFontSize3 NOTIFY changed)
    Q_PROPERTY(double bodyFontSize READ textBodyFontSize NOTIFY changed)
    Q_PROPERTY(double smallFontSize READ textSmallFontSize NOTIFY changed)
    /// Of an icon beside a text.
    Q_PROPERTY(double iconSize READ iconSize NOTIFY changed)
    /// Beside what a push button shows, but for one of a dialog.
    Q_PROPERTY(double buttonPadding MEMBER m_buttonPadding CONSTANT)
    Q_PROPERTY(double lineSpace MEMBER m_lineSpace CONSTANT)
    Q_PROPERTY(double rowHeight MEMBER m_rowHeight CONSTANT)
    /// Of a list that may be very long. A multiple of 8: items are placed in single precision,
    /// which holds only such multiples exactly where millions of points lie above.
    Q_PROPERTY(double listRowHeight READ listRowHeight NOTIFY changed)
    Q_PROPERTY(double rowPadding MEMBER m_rowPadding CONSTANT)
    Q_PROPERTY(double cardRadius MEMBER m_cardRadius CONSTANT)
    Q_PROPERTY(double controlRadius MEMBER m_controlRadius CONSTANT)
    Q_PROPERTY(double margin MEMBER m_margin CONSTANT)
    Q_PROPERTY(double columnWidth READ columnWidth NOTIFY changed)
    Q_PROPERTY(double sheetWidth READ sheetWidth NOTIFY changed)
    Q_PROPERTY(double dialogWidth READ dialogWidth NOTIFY changed)
    /// How long a movement takes, in milliseconds; 0 where the desktop asks for less motion.
    Q_PROPERTY(int motion READ motion NOTIFY changed)

public:
    explicit Theme(QObject* parent = nullptr);

    [[nodiscard]] bool dark() const { return m_appearance.colorScheme() == ColorScheme::Dark; }
    [[nodiscard]] bool rightToLeft() const;
    [[nodiscard]] int motion() const { return m_appearance.reducedMotion() ? 0 : 150; }
    [[nodiscard]] bool highContrast() const { return m_appearance.contrast() == Contrast::High; }
    [[nodiscard]] double textFontSize1() const { return scaledText(fontSize1); }
    [[nodiscard]] double textFontSize2() const { return scaledText(fontSize2); }
    [[nodiscard]] double textFontSize3() const { return scaledText(fontSize3); }
    [[nodiscard]] double textBodyFontSize() const { return scaledText(bodyFontSize); }
    [[nodiscard]] double textSmallFontSize() const { return scaledText(smallFontSize); }
    [[nodiscard]] double iconSize() const;
    [[nodiscard]] double listRowHeight() const;
    [[nodiscard]] double columnWidth() const { return widened(640.0); }
    [[nodiscard]] double sheetWidth() const { return widened(920.0); }
    [[nodiscard]] double dialogWidth() const { return widened(380.0); }
    [[nodiscard]] QColor page() const { return palette().page; }
    [[nodiscard]] QColor card() const { return palette().card; }
    [[nodiscard]] QColor line() const { return palette().line; }
    [[nodiscard]] QColor text() const { return palette().text; }
    [[nodiscard]] QColor softText() const { return palette().softText; }
    [[nodiscard]] QColor accentText() const { return palette().accentText; }
    [[nodiscard]] QColor controlFill() const { return palette().controlFill; }
    [[nodiscard]] QColor controlBorder() const { return palette().controlBorder; }
    [[nodiscard]] QColor controlEdge() const { return palette().controlEdge; }
    [[nodiscard]] QColor knob() const { return palette().knob; }
    [[nodiscard]] QColor knobIcon() const { return palette().knobIcon; }
    [[nodiscard]] QColor on() const { return palette().on; }
    [[nodiscard]] QColor onBorder() const { return palette().onBorder; }
    [[nodiscard]] QColor onText() const { return palette().onText; }
    [[nodiscard]] QColor thumb() const { return palette().thumb; }
    [[nodiscard]] QColor thumbOff() const { return palette().thumbOff; }
    [[nodiscard]] QColor thumbPressed() const { return palette().thumbPressed; }
    [[nodiscard]] QColor thumbHovered() const { return palette().thumbHovered; }
    [[nodiscard]] QColor focus() const { return palette().focus; }
    [[nodiscard]] QColor invalid() const { return palette().invalid; }
    [[nodiscard]] QColor pressed() const { return palette().pressed; }
    [[nodiscard]] QColor hovered() const { return palette().hovered; }
    [[nodiscard]] QColor dim() const { return palette().dim; }

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] const Palette& palette() const
    {
        return paletteFor(m_appearance.colorScheme(), m_appearance.contrast());
    }
    [[nodiscard]] double scaledText(double size) const;
    [[nodiscard]] double widened(double width) const;

    Appearance m_appearance;
    const double m_disabledOpacity = disabledOpacity;
    const double m_lineSpace = lineSpace;
    const double m_buttonPadding = 9.0; // so that a sheet's last button ends 15 before its edge
    const double m_rowHeight = 44.0; // the least that a finger hits surely
    const double m_rowPadding = 18.0;
    const double m_cardRadius = 16.0;
    const double m_controlRadius = 12.0;
    const double m_margin = 24.0;
};
