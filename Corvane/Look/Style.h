// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/DesktopAppearance.h"

#include <QProxyStyle>

#include <functional>

namespace corvane::look {

class FocusRing;
class Habits;

/// Draws the toolkit's controls in the program's own look, whatever theme the desktop has. The painting is in
/// the files named after each kind of control.
class Style final : public QProxyStyle {
    Q_OBJECT

public:
    /// `isComposited` returns whether windows can be translucent.
    explicit Style(std::function<bool()> isComposited = [] { return true; });
    ~Style() override;

    /// Makes a style the application's, and keeps it: the platform themes of some desktops (LXQt, Plasma) set
    /// the desktop's style for the application when the user changes it. Then a style with the same
    /// appearance is set again, in the event loop.
    static void install(std::function<bool()> isComposited);

    [[nodiscard]] bool isComposited() const { return m_isComposited(); }

    /// Applies the desktop's appearance: changes the application's palette, in open windows too, and stops
    /// animations where no motion is wanted. Until the first call, the style follows the toolkit.
    void follow(const Appearance &appearance);

    void polish(QApplication *application) override;
    void polish(QPalette &palette) override;
    void polish(QWidget *widget) override;
    void unpolish(QWidget *widget) override;
    void unpolish(QApplication *application) override;

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget) const override;

    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &contents,
                                         const QWidget *widget) const override;
    [[nodiscard]] QRect subElementRect(SubElement element, const QStyleOption *option,
                                       const QWidget *widget) const override;
    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option,
                                       SubControl part, const QWidget *widget) const override;
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption *option,
                                  const QWidget *widget) const override;
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                                QStyleHintReturn *answer) const override;

private:
    [[nodiscard]] QRect choicesRect(const QStyleOptionComplex &option) const;

    std::function<bool()> m_isComposited;
    Appearance m_appearance;
    bool m_isKept = false; ///< whether to install another when the application's style is replaced
    Habits *m_habits;
    FocusRing *m_ring = nullptr;
};

} // namespace corvane::look
