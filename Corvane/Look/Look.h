// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

class QWidget;

/// All sizes (in points; a point is a logical pixel), colours and type styles of the program. Main thread
/// only.
namespace corvane::look {

/// The type scale. Every size is a share of the desktop font's, so that a larger desktop font gives larger
/// text here, too.
enum class TextStyle { largeTitle, title, title3, headline, body, subheadline, caption, caption2 };

/// The desktop's font in `style`, at that style's weight.
[[nodiscard]] QFont font(TextStyle style);

/// The same at the given weight.
[[nodiscard]] QFont font(TextStyle style, QFont::Weight weight);

/// `font` without kerning, so that digits of one width stay aligned, for times that change.
[[nodiscard]] QFont withAlignedDigits(QFont font);

/// Makes the contents of `view` follow changes of the desktop's font. Called once, by the content of a
/// window: widgets with a font of their own get no such event from the toolkit.
void followDesktopFont(QWidget &view);

/// Colours by purpose. Each but `onAccent` is legible on the window background and on a card, light or dark.
enum class Ink {
    primary,   ///< texts
    secondary, ///< less important texts and symbols
    accent,    ///< emphasis: the desktop's highlight colour
    onAccent,  ///< texts and symbols on `accentGround()`
    red,
    green,
    orange,
    blue,
};

/// The colour of `ink` under `palette`, opaque.
[[nodiscard]] QColor color(Ink ink, const QPalette &palette);

/// The same with an opacity of 0 to 1.
[[nodiscard]] QColor color(Ink ink, const QPalette &palette, double opacity);

/// Whether the window is darker than its text.
[[nodiscard]] bool isDark(const QPalette &palette);

/// The background of a card, and the colour of lines that separate things.
[[nodiscard]] QColor cardColor(const QPalette &palette);
[[nodiscard]] QColor separatorColor(const QPalette &palette);

/// The accent as a background of white text, and as the visible part of a control: an edge, the track of a
/// switch.
[[nodiscard]] QColor accentGround(const QPalette &palette);
[[nodiscard]] QColor accentEdge(const QPalette &palette);

/// The background of input fields and of popups.
[[nodiscard]] QColor fieldColor(const QPalette &palette);

/// The edge of a control, and the track of a switch that is off.
[[nodiscard]] QColor edgeColor(const QPalette &palette);

/// The placeholder text of an empty field.
[[nodiscard]] QColor placeholderColor(const QPalette &palette);

/// Common distances, in points.
namespace space {

inline constexpr int hair = 2;
inline constexpr int tight = 4;
inline constexpr int small = 8;
inline constexpr int medium = 12;
inline constexpr int large = 20;
inline constexpr int wide = 32;

} // namespace space

/// Cards: rounded surfaces with a title and content.
namespace card {

inline constexpr int padding = 16;
inline constexpr int spacing = 12; ///< between the items of a card
inline constexpr double cornerRadius = 12;

} // namespace card

/// The menu bar panel: today's schedule, and the commands below it.
namespace menu {

inline constexpr int width = 320;
inline constexpr int horizontalPadding = 12;
inline constexpr int verticalPadding = 6;
inline constexpr int spacing = 10; ///< between two commands, and between a command and a separator

inline constexpr int schedulePadding = 6; ///< aligned with the commands' texts
inline constexpr int scheduleSpacing = 10;
inline constexpr double scheduleRadius = 12;
inline constexpr int pickerWidth = 150;
inline constexpr int compactHeight = 174; ///< of the rows' area; larger text takes more
inline constexpr int allTodayHeight = 300;

inline constexpr int rowHeight = 54; ///< minimum: three rows fill the compact area
inline constexpr int rowSpacing = 6;
inline constexpr int rowHorizontalPadding = 10;
inline constexpr int rowVerticalPadding = 8;
inline constexpr int rowColumnSpacing = 10;
inline constexpr int rowLineSpacing = 2;
inline constexpr double rowRadius = 9;

} // namespace menu

/// Buttons, switches, fields and other controls.
namespace control {

inline constexpr int horizontalPadding = 14;
inline constexpr int verticalPadding = 6;
inline constexpr int rowPadding = 4; ///< above and below the text of a command
inline constexpr int rowInset = 6;   ///< before and after it
inline constexpr double cornerRadius = 6;
inline constexpr int symbolSpacing = 6;        ///< between a button's symbol and its text
inline constexpr double hoverOpacity = 0.05;   ///< of the text's colour, under the pointer
inline constexpr double pressedOpacity = 0.12; ///< the same, while held down
inline constexpr double focusRingWidth = 2;
inline constexpr int focusRingGap = 2;        ///< between the ring and the control
inline constexpr int animationDuration = 160; ///< milliseconds
inline constexpr int turnDuration = 800;      ///< milliseconds for a full turn of a symbol
inline constexpr double symbolShare = 1.15;   ///< of the font's size
inline constexpr double stepperShare = 0.7;   ///< of the font's size, for the arrows of a stepper
inline constexpr double calendarShare = 1.3;  ///< of the calendar's size hint
inline constexpr double disabledOpacity = 0.55;

} // namespace control

/// Scroll bars.
namespace scrollBar {

inline constexpr int extent = 10;
inline constexpr int resting = 4; ///< thickness of the thumb
inline constexpr int touched = 7;
inline constexpr int fromEdge = 2;
inline constexpr int minimumLength = 24;
inline constexpr double restingOpacity = 0.5;
inline constexpr double touchedOpacity = 0.6;
inline constexpr double heldOpacity = 0.75;

} // namespace scrollBar

/// Lists of choices, menus and calendars that open over a window.
namespace popup {

inline constexpr double cornerRadius = 10;
inline constexpr int padding = 4; ///< between the edge and the rows
inline constexpr int shadowReach = 14;
inline constexpr int shadowRise = 3;           ///< the shadow extends this much less above than below
inline constexpr double shadowOpacity = 0.075; ///< of the innermost of its layers
inline constexpr double edgeOpacity = 0.2;     ///< of the text's colour

} // namespace popup

/// The highlight behind something new.
namespace glow {

inline constexpr int duration = 1600; ///< milliseconds
inline constexpr double opacity = 0.3;
inline constexpr int reach = 8; ///< beyond the highlighted widget

} // namespace glow

/// The badge of the About window.
namespace badge {

inline constexpr int side = 88;
inline constexpr int symbolSize = 42;
inline constexpr double cornerRadius = 25;
inline constexpr double greatestLightness = 0.5; ///< of its background, 0 to 1
inline constexpr int lighterAtTop = 130;         ///< percent of the lightness at the bottom

} // namespace badge

/// The About window.
namespace about {

inline constexpr int padding = 36;
inline constexpr int spacing = 18;
inline constexpr int nameSpacing = 5;
inline constexpr int actionSpacing = 12;
inline constexpr int footerSpacing = 4;
inline constexpr int descriptionWidth = 350; ///< at most

} // namespace about

/// The help centre.
namespace help {

inline constexpr int articleWidth = 650; ///< at most, padding included
inline constexpr int articlePadding = 32;
inline constexpr int articleSpacing = 20;
inline constexpr int sectionSpacing = 8;
inline constexpr int sidebarPadding = 12;
inline constexpr int sidebarWidth = 280;    ///< maximum, unless the user drags it wider
inline constexpr double sidebarShare = 0.4; ///< of the window's width, at most
inline constexpr int emptySymbolSize = 48;

} // namespace help

/// The settings window: a column of cards.
namespace settings {

inline constexpr int columnWidth = 720; ///< maximum; a wider window has wider margins
inline constexpr int padding = 20;      ///< round the column
inline constexpr int spacing = 16;      ///< between cards
inline constexpr int formSpacing = 10;  ///< between the lines of a form

} // namespace settings

/// The first-run setup: one page at a time.
namespace setup {

inline constexpr int minimumWidth = 620;
inline constexpr int minimumHeight = 420;
inline constexpr int padding = 42;
inline constexpr int spacing = 24;
inline constexpr int textWidth = 500; ///< maximum, of the page and of the buttons
inline constexpr int symbolSize = 58;
inline constexpr int capsuleSpacing = 8;
inline constexpr int capsuleHeight = 8;
inline constexpr int capsuleWidth = 8;
inline constexpr int currentCapsuleWidth = 26;
inline constexpr double capsuleOpacity = 0.25; ///< of the other pages' capsules
inline constexpr int slideDistance = 48;
inline constexpr int slideDuration = 260; ///< milliseconds

} // namespace setup

/// White and black with an opacity of 0 to 1.
[[nodiscard]] QColor white(double opacity);
[[nodiscard]] QColor black(double opacity);

/// The desktop's font at `size` points (logical pixels) and `weight`.
[[nodiscard]] QFont font(int size, QFont::Weight weight);

/// The banner's card and its contents.
namespace banner {

inline constexpr int width = 1000;
inline constexpr int height = 280;
inline constexpr double cornerRadius = 40;
inline constexpr double strokeWidth = 1.4; ///< drawn inside the edge
inline constexpr double shadowBlur = 28;
inline constexpr double shadowOpacity = 0.55;

inline constexpr int leadingPadding = 56;
inline constexpr int trailingPadding = 82; ///< the width of the close button's corner
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

/// The card of the menu bar panel's window.
namespace menuBarPanel {

inline constexpr double cornerRadius = 10;
inline constexpr int shadowReach = 14;
inline constexpr double shadowOpacity = 0.075; ///< of the innermost of its layers
inline constexpr int shadowRise = 2;           ///< the shadow extends this much less above than below
inline constexpr double edgeOpacity = 0.22;    ///< of the text's colour, over the background

} // namespace menuBarPanel

} // namespace corvane::look
