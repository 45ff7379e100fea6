// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Style.h"

#include "Corvane/Look/Accessible.h"
#include "Corvane/Look/ButtonPainting.h"
#include "Corvane/Look/Controls.h"
#include "Corvane/Look/FieldPainting.h"
#include "Corvane/Look/FocusRing.h"
#include "Corvane/Look/Habits.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/Painting.h"
#include "Corvane/Look/Palettes.h"
#include "Corvane/Look/PopupPainting.h"
#include "Corvane/Look/ScrollBarPainting.h"
#include "Corvane/Look/SwitchPainting.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFocusFrame>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QStyleOption>
#include <QToolButton>

#include <utility>

using namespace Qt::StringLiterals;

namespace corvane::look {

namespace {

/// The toolkit has no public class for tool tips.
bool isToolTip(const QWidget *widget)
{
    return widget->inherits("QTipLabel");
}

QPalette toolTipPalette()
{
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::ToolTipBase, fieldColor(palette));
    palette.setColor(QPalette::ToolTipText, palette.color(QPalette::Text));
    return palette;
}

bool hasHabits(const QWidget *widget)
{
    return qobject_cast<const QPushButton *>(widget) != nullptr ||
           qobject_cast<const QRadioButton *>(widget) != nullptr ||
           qobject_cast<const QComboBox *>(widget) != nullptr ||
           qobject_cast<const QLineEdit *>(widget) != nullptr ||
           qobject_cast<const QAbstractSpinBox *>(widget) != nullptr ||
           (qobject_cast<const QToolButton *>(widget) != nullptr &&
            qobject_cast<const QLineEdit *>(widget->parentWidget()) != nullptr);
}

} // namespace

Style::Style(std::function<bool()> isComposited)
    : QProxyStyle(u"Fusion"_s)
    , m_isComposited(std::move(isComposited))
    , m_habits(new Habits(m_isComposited, this))
{
}

Style::~Style()
{
    if (!m_isKept || qApp == nullptr) {
        return;
    }
    // Queued: the application is still changing its style.
    const auto installAgain = [isComposited = m_isComposited, appearance = m_appearance] {
        install(isComposited);
        static_cast<Style *>(QApplication::style())->follow(appearance);
    };
    QMetaObject::invokeMethod(qApp, installAgain, Qt::QueuedConnection);
}

void Style::install(std::function<bool()> isComposited)
{
    if (auto *earlier = qobject_cast<Style *>(QApplication::style())) {
        earlier->m_isKept = false;
    }
    auto *style = new Style(std::move(isComposited));
    style->m_isKept = true;
    QApplication::setStyle(style); // takes ownership
}

void Style::polish(QApplication *application)
{
    QProxyStyle::polish(application);
    installAccessibility();
    m_ring = new FocusRing(this);
}

void Style::unpolish(QApplication *application)
{
    delete std::exchange(m_ring, nullptr);
    QProxyStyle::unpolish(application);
}

void Style::follow(const Appearance &appearance)
{
    m_appearance = appearance;
    // Makes the toolkit reload the desktop's palette, which this style then polishes.
    if (qApp != nullptr && QApplication::style() == this) {
        QApplication::setPalette(QPalette());
    }
}

void Style::polish(QPalette &palette)
{
    QProxyStyle::polish(palette);
    palette = withAppearance(palette, m_appearance);
    // The same accent everywhere, also where the toolkit paints.
    const QColor ground = accentGround(palette);
    const QColor link = color(Ink::accent, palette);
    const QColor placeholder = placeholderColor(palette);
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        palette.setColor(group, QPalette::Highlight, ground);
        palette.setColor(group, QPalette::HighlightedText, Qt::white);
        palette.setColor(group, QPalette::Link, link);
        palette.setColor(group, QPalette::PlaceholderText, placeholder);
    }
}

void Style::polish(QWidget *widget)
{
    QProxyStyle::polish(widget);
    if (hasHabits(widget)) {
        m_habits->adopt(*widget);
    }
    if (auto *box = qobject_cast<QCheckBox *>(widget)) {
        if (box->findChild<KnobSlide *>(QString(), Qt::FindDirectChildrenOnly) == nullptr) {
            new KnobSlide(*box);
        }
    } else if (qobject_cast<QScrollBar *>(widget) != nullptr) {
        widget->setAttribute(Qt::WA_OpaquePaintEvent, false);
    } else if (isToolTip(widget)) {
        widget->setPalette(toolTipPalette());
        widget->setAttribute(Qt::WA_TranslucentBackground, isComposited());
    } else if (qobject_cast<QMenu *>(widget) != nullptr) {
        widget->setAttribute(Qt::WA_TranslucentBackground, isComposited());
    } else if (auto *view = qobject_cast<QAbstractItemView *>(widget);
               view != nullptr && isListWindow(view->parentWidget())) {
        view->viewport()->setAutoFillBackground(false);
    }
}

void Style::unpolish(QWidget *widget)
{
    m_habits->release(*widget);
    QProxyStyle::unpolish(widget);
}

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                          const QWidget *widget) const
{
    switch (element) {
    case PE_PanelLineEdit:
        // A frameless line edit is part of a field that has painted its own background.
        if (const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
            frame != nullptr && frame->lineWidth > 0) {
            paintField(*painter, *option,
                       option->state.testFlag(State_HasFocus) && option->state.testFlag(State_Active));
        }
        return;
    case PE_PanelMenu:
        if (!isListWindow(widget)) {
            paintPopup(*painter, option->rect, option->palette, isComposited());
        }
        return;
    case PE_FrameMenu:
    case PE_FrameFocusRect:
        return;
    case PE_PanelItemViewRow:
    case PE_PanelItemViewItem:
        if (widget == nullptr || widget->objectName() != u"qt_calendar_calendarview"_s) {
            break; // a day in a calendar draws its own background
        }
        return;
    case PE_PanelTipLabel:
        paintToolTip(*painter, *option);
        return;
    case PE_PanelButtonTool:
        paintToolButtonGround(*painter, *option);
        return;
    default:
        break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void Style::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                        const QWidget *widget) const
{
    const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option);
    switch (element) {
    case CE_PushButton:
        if (button != nullptr) {
            paintPushButton(*painter, *button, widget);
            return;
        }
        break;
    case CE_CheckBox:
        if (const auto *box = qobject_cast<const QCheckBox *>(widget); box != nullptr && button != nullptr) {
            paintSwitch(*painter, *button, KnobSlide::position(*box));
            return;
        }
        break;
    case CE_RadioButton:
        if (button != nullptr && roleOf(widget) == Role::segment) {
            paintSegment(*painter, *button);
            return;
        }
        break;
    case CE_ComboBoxLabel:
        if (const auto *picker = qstyleoption_cast<const QStyleOptionComboBox *>(option)) {
            paintPickerText(*painter, *picker);
            return;
        }
        break;
    case CE_MenuItem:
        if (const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option)) {
            if (qobject_cast<const QComboBox *>(widget) != nullptr) {
                painter->fillRect(item->rect, fieldColor(item->palette)); // over the toolkit's own background
            }
            paintMenuItem(*painter, *item);
            return;
        }
        break;
    case CE_MenuEmptyArea:
        return;
    case CE_ShapedFrame:
        if (isListWindow(widget)) {
            paintPopup(*painter, option->rect, option->palette, isComposited());
            return;
        }
        break;
    case CE_FocusFrame:
        if (const auto *frame = qobject_cast<const QFocusFrame *>(widget)) {
            const ControlPainter guard(*painter, *option);
            FocusRing::paint(*painter, *option, *frame);
        }
        return;
    default:
        break;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void Style::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                               const QWidget *widget) const
{
    switch (control) {
    case CC_ComboBox:
        if (const auto *picker = qstyleoption_cast<const QStyleOptionComboBox *>(option)) {
            paintPicker(*painter, *picker);
            return;
        }
        break;
    case CC_SpinBox:
        if (const auto *box = qstyleoption_cast<const QStyleOptionSpinBox *>(option)) {
            paintSpinBox(*painter, *box);
            return;
        }
        break;
    case CC_ToolButton:
        if (const auto *button = qstyleoption_cast<const QStyleOptionToolButton *>(option)) {
            QStyleOptionToolButton plain = *button;
            plain.features &=
                ~QStyleOptionToolButton::HasMenu; // no menu arrow: a click anywhere opens the menu
            QProxyStyle::drawComplexControl(control, &plain, painter, widget);
            return;
        }
        break;
    case CC_ScrollBar:
        if (const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option)) {
            paintScrollBar(*painter, *bar);
            return;
        }
        break;
    default:
        break;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

} // namespace corvane::look
