// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

/// The one home of how things look: sizes in points (a point is a logical pixel), colours, and the scale of
/// type. Main thread only.
namespace corvane::look {

/// The scale of type. Every size is a share of the desktop's own font, so that a teacher who made that larger
/// reads larger texts here too.
enum class TextStyle { largeTitle, title, title3, headline, body, subheadline, caption, caption2 };

/// The desktop's own font in `style`, in the weight that the style has by itself.
[[nodiscard]] QFont font(TextStyle style);

/// The same in a weight of choice.
[[nodiscard]] QFont font(TextStyle style, QFont::Weight weight);

/// The same with digits that are all equally wide, for times that change.
[[nodiscard]] QFont withMonospacedDigits(QFont font);

/// What a colour is for. Each is legible on the desktop's window background, light or dark.
enum class Ink {
    primary,   ///< texts
    secondary, ///< texts and symbols that stand back
    accent,    ///< what the eye is led to: the desktop's highlight
    onAccent,  ///< texts and symbols on a ground of `accent`
    red,
    green,
    orange,
    blue,
};

/// The colour of `ink` under `palette`, opaque.
[[nodiscard]] QColor color(Ink ink, const QPalette &palette);

/// The same, `opacity` (0 to 1) of it.
[[nodiscard]] QColor color(Ink ink, const QPalette &palette, double opacity);

/// Whether `palette` is a dark one.
[[nodiscard]] bool isDark(const QPalette &palette);

/// The ground of a card on the window's background, and the line that separates things.
[[nodiscard]] QColor cardColor(const QPalette &palette);
[[nodiscard]] QColor separatorColor(const QPalette &palette);

/// Distances that recur, in points.
namespace space {

inline constexpr int hair = 2;
inline constexpr int tight = 4;
inline constexpr int small = 8;
inline constexpr int medium = 12;
inline constexpr int large = 20;
inline constexpr int wide = 32;

} // namespace space

/// Cards: rounded grounds with a title and content.
namespace card {

inline constexpr int padding = 16;
inline constexpr int spacing = 12; ///< between what stands in one
inline constexpr double cornerRadius = 12;

} // namespace card

/// Buttons, switches and what else is pressed.
namespace control {

inline constexpr int horizontalPadding = 14;
inline constexpr int verticalPadding = 6;
inline constexpr double cornerRadius = 6;
inline constexpr int symbolSpacing = 6;     ///< between a button's symbol and its text
inline constexpr double focusRingWidth = 2; ///< drawn inside the control's own area
inline constexpr double symbolShare = 1.15; ///< of the font's size

} // namespace control

/// White and black of an opacity, 0 to 1.
[[nodiscard]] QColor white(double opacity);
[[nodiscard]] QColor black(double opacity);

/// The desktop's own font at `size` points (a point is a logical pixel) and `weight`.
[[nodiscard]] QFont font(int size, QFont::Weight weight);

/// The banner's card and what stands on it.
namespace banner {

inline constexpr int width = 1000;
inline constexpr int height = 280;
inline constexpr double cornerRadius = 40;
inline constexpr double strokeWidth = 1.4; ///< drawn wholly inside the edge
inline constexpr double shadowBlur = 28;
inline constexpr double shadowOpacity = 0.55;

inline constexpr int leadingPadding = 56;
inline constexpr int trailingPadding = 82; ///< as wide as the corner that the close button takes
inline constexpr int iconSpacing = 40;     ///< between the icon and the texts
inline constexpr int lineSpacing = 10;

inline constexpr int iconArea = 104;
inline constexpr int iconSize = 68;
inline constexpr double iconRadius = 26; ///< of the icon's background

inline constexpr int closeArea = 42;
inline constexpr int closeSize = 18;
inline constexpr int closePadding = 20;

inline constexpr int titleSize = 56;
inline constexpr double titleShrinks = 0.55;
inline constexpr int studentSize = 40;
inline constexpr double studentShrinks = 0.65;
inline constexpr int informationSize = 28;
inline constexpr double informationShrinks = 1;

} // namespace banner

} // namespace corvane::look
