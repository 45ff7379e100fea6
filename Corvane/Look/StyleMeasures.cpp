// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/ButtonPainting.h"
#include "Corvane/Look/Controls.h"
#include "Corvane/Look/FieldPainting.h"
#include "Corvane/Look/FocusRing.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/PopupPainting.h"
#include "Corvane/Look/ScrollBarPainting.h"
#include "Corvane/Look/Style.h"
#include "Corvane/Look/SwitchPainting.h"

#include <QFocusFrame>
#include <QFontInfo>
#include <QFrame>
#include <QStyleOption>

#include <algorithm>

/// The Style's measures: sizes, positions of parts, and hints on behaviour.
namespace corvane::look {

QSize Style::sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &contents,
                              const QWidget *widget) const
{
    const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option);
    switch (type) {
    case CT_PushButton:
        if (button != nullptr && widget != nullptr) {
            return pushButtonSize(*button, widget);
        }
        break;
    case CT_CheckBox:
        if (button != nullptr) {
            return switchSize(*button);
        }
        break;
    case CT_RadioButton:
        if (button != nullptr && roleOf(widget) == Role::segment) {
            return segmentSize(*button);
        }
        break;
    case CT_ComboBox:
        if (const auto *picker = qstyleoption_cast<const QStyleOptionComboBox *>(option)) {
            return pickerSize(*picker, contents.width());
        }
        break;
    case CT_LineEdit:
        if (const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
            frame != nullptr && frame->lineWidth > 0) {
            return {contents.width() + 2 * fieldInset, fieldHeight(option->fontMetrics)};
        }
        break;
    case CT_SpinBox:
        if (const auto *box = qstyleoption_cast<const QStyleOptionSpinBox *>(option)) {
            return spinBoxSize(*box, contents.width());
        }
        break;
    case CT_MenuItem:
        if (const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option)) {
            return menuItemSize(*item);
        }
        break;
    default:
        break;
    }
    return QProxyStyle::sizeFromContents(type, option, contents, widget);
}

QRect Style::subElementRect(SubElement element, const QStyleOption *option, const QWidget *widget) const
{
    switch (element) {
    case SE_CheckBoxClickRect:
        return option->rect;
    case SE_CheckBoxIndicator:
        return switchTrack(*option);
    case SE_RadioButtonClickRect:
        if (roleOf(widget) == Role::segment) {
            return option->rect;
        }
        break;
    case SE_LineEditContents:
        if (const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
            frame != nullptr && frame->lineWidth > 0) {
            return option->rect.adjusted(fieldInset, 1, -fieldInset, -1);
        }
        break;
    case SE_ShapedFrameContents:
        if (isListWindow(widget)) {
            return option->rect.marginsRemoved(popupMargins(isComposited()));
        }
        break;
    default:
        break;
    }
    return QProxyStyle::subElementRect(element, option, widget);
}

QRect Style::choicesRect(const QStyleOptionComplex &option) const
{
    // Aligns the choices' texts with the picker's.
    const QMargins margins = popupMargins(isComposited());
    const int lead = margins.left() + menuTextInset(option) - control::horizontalPadding;
    const int tail = margins.right() + space::medium - control::horizontalPadding;
    const QRect list = option.rect.adjusted(-lead, 0, std::max(tail, 0), 0);
    return visualRect(option.direction, option.rect, list).translated(0, -margins.top());
}

QRect Style::subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
                            const QWidget *widget) const
{
    switch (control) {
    case CC_ScrollBar:
        if (const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option)) {
            return scrollBarPart(*bar, part);
        }
        break;
    case CC_SpinBox:
        if (const auto *box = qstyleoption_cast<const QStyleOptionSpinBox *>(option)) {
            return spinBoxPart(*box, part);
        }
        break;
    case CC_ComboBox:
        return part == SC_ComboBoxListBoxPopup ? choicesRect(*option) : option->rect;
    default:
        break;
    }
    return QProxyStyle::subControlRect(control, option, part, widget);
}

int Style::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    switch (metric) {
    case PM_ScrollBarExtent:
    case PM_ScrollView_ScrollBarOverlap: // lies entirely over the content
        return scrollBar::extent;
    case PM_ScrollBarSliderMin:
        return scrollBar::minimumLength;
    case PM_FocusFrameHMargin:
    case PM_FocusFrameVMargin:
        // The frame names itself only in the option, not as `widget`.
        if (const auto *frame =
                qobject_cast<const QFocusFrame *>(option != nullptr ? option->styleObject : nullptr)) {
            return FocusRing::reach(frame->widget());
        }
        return 0;
    case PM_MenuPanelWidth:
        return popupShadow(isComposited()).left();
    case PM_MenuHMargin:
    case PM_MenuVMargin:
        return popup::padding;
    case PM_LineEditIconSize:
        return std::max(QProxyStyle::pixelMetric(metric, option, widget),
                        widget != nullptr ? QFontInfo(widget->font()).pixelSize() : 0);
    case PM_ToolTipLabelFrameWidth:
        return space::tight;
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
        return 0;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int Style::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                     QStyleHintReturn *answer) const
{
    switch (hint) {
    case SH_Widget_Animation_Duration:
        return m_appearance.reducesMotion ? 0 : control::animationDuration;
    case SH_FocusFrame_Mask:
        return 0;
    case SH_FocusFrame_AboveWidget:
    case SH_ComboBox_Popup:
    case SH_ComboBox_ListMouseTracking:
        return 1;
    case SH_ComboBox_PopupFrameStyle:
        return QFrame::StyledPanel | QFrame::Plain;
    case SH_Menu_Mask:
    case SH_ToolTip_Mask:
        if (auto *mask = qstyleoption_cast<QStyleHintReturnMask *>(answer);
            mask != nullptr && option != nullptr && !isComposited()) {
            mask->region = roundedRegion(option->rect.size(),
                                         hint == SH_Menu_Mask ? popup::cornerRadius : control::cornerRadius);
            return 1;
        }
        return 0;
    default:
        return QProxyStyle::styleHint(hint, option, widget, answer);
    }
}

} // namespace corvane::look
