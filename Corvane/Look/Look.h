// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QFont>

/// The one home of how things look: sizes in points, colours, and the scale of type.
namespace corvane::look {

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

/// The card of the bell's panel.
namespace panel {

inline constexpr double cornerRadius = 10;
inline constexpr int shadowReach = 14;
inline constexpr double shadowOpacity = 0.3;
inline constexpr double edgeOpacity = 0.22; ///< of the text's colour, over the background

} // namespace panel

} // namespace corvane::look
