// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Habits.h"

#include "Corvane/Look/Controls.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/Symbols.h"

#include <QAbstractSpinBox>
#include <QChildEvent>
#include <QComboBox>
#include <QCoreApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

namespace corvane::look {

namespace {

bool isPressKey(const QKeyEvent &event)
{
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

/// Outside dialogs the toolkit ignores Enter; here it presses the focused button, but not on auto-repeat.
bool pressByEnter(QPushButton &button, const QKeyEvent &event)
{
    if (!isPressKey(event) || event.isAutoRepeat()) {
        return false;
    }
    button.click();
    return true;
}

bool emptyByEscape(QLineEdit &field, const QKeyEvent &event)
{
    if (roleOf(&field) != Role::search || event.key() != Qt::Key_Escape || field.text().isEmpty()) {
        return false;
    }
    field.clear();
    return true;
}

/// On Tab the toolkit selects the text of a field before it reports the focus. A screen reader that hears of
/// the selection first does not say the field's name. Here the selection follows the report.
bool selectAfterFocus(QLineEdit &field, const QFocusEvent &event)
{
    if (event.reason() != Qt::TabFocusReason && event.reason() != Qt::BacktabFocusReason) {
        return false;
    }
    QFocusEvent withoutSelection(QEvent::FocusIn, Qt::OtherFocusReason);
    QCoreApplication::sendEvent(&field, &withoutSelection);
    if (!field.text().isEmpty()) {
        QMetaObject::invokeMethod(&field, &QLineEdit::selectAll, Qt::QueuedConnection);
    }
    return true;
}

void followFont(QWidget &control)
{
    const Role role = roleOf(&control);
    if (role == Role::quietLink || role == Role::segment) {
        control.setFont(font(TextStyle::caption));
    }
}

/// A button in a line edit is only a symbol, which changes colour under the pointer.
void lightUp(QToolButton &button, bool isUnderMouse)
{
    if (const QString symbol = symbolOf(&button); !symbol.isEmpty()) {
        button.setIcon(symbolIcon(symbol, isUnderMouse ? Ink::primary : Ink::secondary));
    }
}

} // namespace

void Habits::adopt(QWidget &control)
{
    control.installEventFilter(this);
    if (qobject_cast<QComboBox *>(&control) != nullptr) {
        for (QObject *child : control.children()) {
            prepareListWindow(child);
        }
    }
}

void Habits::prepareListWindow(QObject *child) const
{
    auto *window = qobject_cast<QWidget *>(child);
    if (window != nullptr && window->windowType() == Qt::Popup) {
        window->setAttribute(Qt::WA_TranslucentBackground, m_isComposited());
    }
}

bool Habits::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
        if (auto *button = qobject_cast<QPushButton *>(watched)) {
            return pressByEnter(*button, *static_cast<QKeyEvent *>(event));
        }
        if (auto *field = qobject_cast<QLineEdit *>(watched)) {
            return emptyByEscape(*field, *static_cast<QKeyEvent *>(event));
        }
        return false;
    case QEvent::FocusIn:
        if (auto *field = qobject_cast<QLineEdit *>(watched)) {
            return selectAfterFocus(*field, *static_cast<QFocusEvent *>(event));
        }
        return false;
    case QEvent::Wheel:
        if (qobject_cast<QComboBox *>(watched) != nullptr ||
            qobject_cast<QAbstractSpinBox *>(watched) != nullptr) {
            event->ignore(); // passed on to the parent
            return true;
        }
        return false;
    case QEvent::ChildAdded:
        if (qobject_cast<QComboBox *>(watched) != nullptr) {
            prepareListWindow(static_cast<QChildEvent *>(event)->child());
        }
        return false;
    case QEvent::ApplicationFontChange:
        followFont(*static_cast<QWidget *>(watched));
        return false;
    case QEvent::Enter:
    case QEvent::Leave:
        if (auto *button = qobject_cast<QToolButton *>(watched)) {
            lightUp(*button, event->type() == QEvent::Enter);
        }
        return false;
    default:
        return false;
    }
}

} // namespace corvane::look
