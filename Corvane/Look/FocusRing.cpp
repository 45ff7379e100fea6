// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/FocusRing.h"

#include "Corvane/Look/Controls.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/Painting.h"
#include "Corvane/Look/Surfaces.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QFocusFrame>
#include <QLineEdit>
#include <QScrollArea>
#include <QStyleOption>
#include <QToolButton>

namespace corvane::look {

namespace {

bool isTypedInto(const QWidget *widget)
{
    return qobject_cast<const QLineEdit *>(widget) != nullptr ||
           qobject_cast<const QAbstractSpinBox *>(widget) != nullptr;
}

bool wantsRing(const QWidget *widget)
{
    if (widget == nullptr || widget->window()->windowType() == Qt::Popup) {
        return false;
    }
    // Who clicks into a field is to see where the letters go; who clicks a button knows.
    return isTypedInto(widget) ||
           (showsFocus(*widget) && (qobject_cast<const QAbstractButton *>(widget) != nullptr ||
                                    qobject_cast<const QComboBox *>(widget) != nullptr ||
                                    qobject_cast<const QScrollArea *>(widget) != nullptr));
}

/// Whether the ring of `control` lies in its own area: it stands close beside others, or fills its window.
bool isInside(const QWidget *control)
{
    return (qobject_cast<const QAbstractButton *>(control) != nullptr && roleOf(control) == Role::command) ||
           qobject_cast<const QScrollArea *>(control) != nullptr;
}

} // namespace

FocusRing::FocusRing(QObject *parent) : QObject(parent)
{
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget *, QWidget *focused) { follow(focused); });
}

FocusRing::~FocusRing()
{
    if (m_frame != nullptr) {
        m_frame->setWidget(nullptr);
        m_frame
            ->deleteLater(); // the toolkit goes through all widgets while one style takes over from another
    }
}

void FocusRing::follow(QWidget *focused)
{
    if (!wantsRing(focused)) {
        if (m_frame != nullptr) {
            m_frame->setWidget(nullptr);
        }
        return;
    }
    if (m_frame == nullptr) {
        m_frame = new QFocusFrame;
    }
    m_frame->setWidget(focused);
}

int FocusRing::reach(const QWidget *control)
{
    return isInside(control) ? 0 : control::focusRingGap + static_cast<int>(control::focusRingWidth);
}

void FocusRing::paint(QPainter &painter, const QStyleOption &option, const QFocusFrame &frame)
{
    const int reach = FocusRing::reach(frame.widget());
    strokeRounded(painter, option.rect, control::cornerRadius + reach,
                  color(Ink::accent, frame.widget() != nullptr ? frame.widget()->palette() : option.palette),
                  control::focusRingWidth);
}

} // namespace corvane::look
