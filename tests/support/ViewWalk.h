// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAbstractButton>
#include <QAccessible>
#include <QComboBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QScrollArea>
#include <QTest>
#include <QWidget>

#include <functional>

/// Helpers that walk through the widgets of a view.
namespace corvane::viewWalk {

/// Calls `visit` with each widget laid out in `root`, in layout order, which is the reading order.
inline void visitLaidOut(const QWidget &root, const std::function<void(const QWidget &)> &visit)
{
    const std::function<void(const QLayout &)> visitLayout = [&](const QLayout &layout) {
        for (int index = 0; index < layout.count(); ++index) {
            QLayoutItem *item = layout.itemAt(index);
            if (item->layout() != nullptr) {
                visitLayout(*item->layout());
            } else if (item->widget() != nullptr) {
                visit(*item->widget());
                visitLaidOut(*item->widget(), visit);
            }
        }
    };
    if (const auto *area = qobject_cast<const QScrollArea *>(&root)) {
        visit(*area->widget());
        visitLaidOut(*area->widget(), visit);
    } else if (root.layout() != nullptr) {
        visitLayout(*root.layout());
    }
}

/// All visible texts in `root`, in order: labels, buttons, placeholders and the choices of combo boxes.
inline QStringList texts(const QWidget &root)
{
    QStringList texts;
    visitLaidOut(root, [&](const QWidget &widget) {
        QStringList read;
        if (const auto *label = qobject_cast<const QLabel *>(&widget)) {
            read << label->text();
        } else if (const auto *button = qobject_cast<const QAbstractButton *>(&widget)) {
            read << button->text();
        } else if (const auto *field = qobject_cast<const QLineEdit *>(&widget)) {
            read << field->placeholderText();
        } else if (const auto *picker = qobject_cast<const QComboBox *>(&widget)) {
            for (int index = 0; index < picker->count(); ++index) {
                read << picker->itemText(index);
            }
        }
        read.removeAll(QString());
        texts << read;
    });
    return texts;
}

/// The first button whose text or accessible name is `text`, and which is not hidden; nullptr if there is
/// none.
inline QAbstractButton *button(const QWidget &root, const QString &text)
{
    for (auto *button : root.findChildren<QAbstractButton *>()) {
        if ((button->text() == text || button->accessibleName() == text) && !button->isHidden()) {
            return button;
        }
    }
    return nullptr;
}

/// The accessible names of the controls that Tab reaches in `window`, in order, until they repeat. `window`
/// is shown and active.
inline QStringList tabOrder(QWidget &window)
{
    QStringList names;
    const QWidget *first = nullptr;
    const QWidget *before = nullptr;
    for (int presses = 0; presses < 1000; ++presses) {
        QTest::keyClick(window.focusWidget() != nullptr ? window.focusWidget() : &window, Qt::Key_Tab);
        QWidget *widget = window.focusWidget();
        if (widget == nullptr || (widget == first && before != first)) {
            break;
        }
        first = first == nullptr ? widget : first;
        if (widget != before) { // Tab leaves a field with several parts only after the last part
            // A combo box without an accessible name reports its current choice; its label names it.
            names << (widget->accessibleName().isEmpty()
                          ? QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name)
                          : widget->accessibleName());
        }
        before = widget;
    }
    return names;
}

/// The controls in `object` that a screen reader reaches but cannot name.
inline QStringList unnamedControls(QObject *object)
{
    static const QList<QAccessible::Role> controls{
        QAccessible::PushButton, QAccessible::CheckBox, QAccessible::RadioButton,
        QAccessible::ComboBox,   QAccessible::SpinBox,  QAccessible::EditableText,
        QAccessible::List,       QAccessible::Table,    QAccessible::Link,
        QAccessible::ButtonMenu, QAccessible::Slider,   QAccessible::StaticText};
    QStringList unnamed;
    const std::function<void(QAccessibleInterface *)> visit = [&](QAccessibleInterface *interface) {
        if (interface == nullptr || interface->state().invisible) {
            return;
        }
        // A combo box without an accessible name reports its current choice; its label names it.
        const bool isNamed = interface->role() == QAccessible::ComboBox
                                 ? !interface->relations(QAccessible::Label).empty()
                                 : !interface->text(QAccessible::Name).trimmed().isEmpty();
        if (controls.contains(interface->role()) && !isNamed) {
            unnamed << QStringLiteral("%1 of role %2")
                           .arg(interface->object() != nullptr
                                    ? QLatin1StringView(interface->object()->metaObject()->className())
                                    : QLatin1StringView("?"))
                           .arg(interface->role());
        }
        for (int index = 0; index < interface->childCount(); ++index) {
            visit(interface->child(index));
        }
    };
    visit(QAccessible::queryAccessibleInterface(object));
    return unnamed;
}

/// The widgets laid out in `root` that extend beyond their parent or have less room than they need.
inline QStringList cutWidgets(const QWidget &root)
{
    QStringList cut;
    visitLaidOut(root, [&](const QWidget &widget) {
        if (widget.isHidden() || widget.parentWidget() == nullptr ||
            qobject_cast<const QScrollArea *>(widget.parentWidget()->parentWidget()) != nullptr) {
            return;
        }
        const auto *label = qobject_cast<const QLabel *>(&widget);
        const int needed = label != nullptr && label->wordWrap() ? label->heightForWidth(widget.width())
                                                                 : widget.minimumSizeHint().height();
        if (!widget.parentWidget()->rect().contains(widget.geometry()) || widget.height() < needed ||
            widget.width() < widget.minimumSizeHint().width()) {
            cut << QStringLiteral("%1 \"%2\" %3,%4 %5x%6 in %7x%8")
                       .arg(QLatin1StringView(widget.metaObject()->className()),
                            label != nullptr ? label->text() : widget.accessibleName())
                       .arg(widget.x())
                       .arg(widget.y())
                       .arg(widget.width())
                       .arg(widget.height())
                       .arg(widget.parentWidget()->width())
                       .arg(widget.parentWidget()->height());
        }
    });
    return cut;
}

} // namespace corvane::viewWalk
