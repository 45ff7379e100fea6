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
    // A clicked field shows where typing goes; a clicked button needs no ring.
    return isTypedInto(widget) ||
           (showsFocus(*widget) && (qobject_cast<const QAbstractButton *>(widget) != nullptr ||
                                    qobject_cast<const QComboBox *>(widget) != nullptr ||
                                    qobject_cast<const QScrollArea *>(widget) != nullptr));
}

/// Whether the ring is drawn inside `control`, which is close to others or fills its window.
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
        // It would ask the application's style, which is being destroyed at the program's end.
        if (!QCoreApplication::closingDown()) {
            m_frame->setWidget(nullptr);
        }
        m_frame->deleteLater(); // the toolkit iterates over all widgets while it replaces a style
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
    // The toolkit hides the ring of a control that is scrolled out of view, and does not show it again once
    // the control is scrolled into view.
    m_frame->show();
    m_frame->raise();
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
