// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Controls.h"

#include "Corvane/Look/Accessible.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/Symbols.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <QVariant>

using namespace Qt::StringLiterals;

namespace corvane::look {

namespace {

constexpr auto controlRoleProperty = "quilletRole";
constexpr auto symbolProperty = "quilletSymbol";
constexpr auto keysProperty = "quilletKeys";

QVariant property(const QWidget *control, const char *name)
{
    return control != nullptr ? control->property(name) : QVariant();
}

} // namespace

void setRole(QWidget &control, Role role)
{
    control.setProperty(controlRoleProperty, static_cast<int>(role));
}

Role roleOf(const QWidget *control)
{
    return static_cast<Role>(property(control, controlRoleProperty).toInt());
}

void setSymbol(QWidget &control, const QString &name)
{
    control.setProperty(symbolProperty, name);
}

QString symbolOf(const QWidget *control)
{
    return property(control, symbolProperty).toString();
}

void setKeyText(QWidget &control, const QString &keys)
{
    control.setProperty(keysProperty, keys);
}

QString keyTextOf(const QWidget *control)
{
    return property(control, keysProperty).toString();
}

QPushButton *pushButton(const QString &text, Role role, const QString &symbolName)
{
    auto *button = new QPushButton(text);
    setRole(*button, role);
    setSymbol(*button, symbolName);
    button->setFocusPolicy(Qt::TabFocus);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    if (role == Role::quietLink) {
        setAccessibleRole(*button, QAccessible::Link);
        button->setCursor(Qt::PointingHandCursor);
        button->setFont(font(TextStyle::caption));
    }
    return button;
}

QComboBox *picker(const QString &label, const QStringList &choices)
{
    auto *picker = new QComboBox;
    picker->setAccessibleName(label);
    picker->addItems(choices);
    picker->setFocusPolicy(Qt::StrongFocus);
    picker->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    picker->setMaxVisibleItems(static_cast<int>(choices.size()));
    // Some screen readers say only the label, and never the choice: neither at first nor when it changes.
    const auto tellChoice = [picker] {
        describe(*picker,
                 u"%1, %2 of %3"_s.arg(picker->currentText(), QString::number(picker->currentIndex() + 1),
                                       QString::number(picker->count())));
    };
    QObject::connect(picker, &QComboBox::currentIndexChanged, picker, tellChoice);
    tellChoice();
    return picker;
}

QLineEdit *textField(const QString &placeholder)
{
    auto *field = new QLineEdit;
    field->setPlaceholderText(placeholder);
    field->setAccessibleName(placeholder);
    return field;
}

QLineEdit *searchField(const QString &prompt)
{
    QLineEdit *field = textField(prompt);
    field->addAction(symbolIcon(u"magnifyingglass"_s, Ink::secondary), QLineEdit::LeadingPosition);
    // Not the toolkit's own clear button, which has no name and fades.
    QAction *clear = field->addAction(symbolIcon(u"xmark"_s, Ink::secondary), QLineEdit::TrailingPosition);
    QObject::connect(clear, &QAction::triggered, field, &QLineEdit::clear);
    for (auto *button : field->findChildren<QToolButton *>()) {
        const bool isCross = button->defaultAction() == clear;
        const QString name = isCross ? u"Clear search"_s : prompt;
        button->setAccessibleName(name);
        button->setToolTip(isCross ? name : QString());
        button->setAttribute(Qt::WA_TransparentForMouseEvents, !isCross);
        setSymbol(*button, isCross ? u"xmark"_s : QString());
    }
    clear->setVisible(false);
    QObject::connect(field, &QLineEdit::textChanged, clear,
                     [clear](const QString &text) { clear->setVisible(!text.isEmpty()); });
    setRole(*field, Role::search);
    return field;
}

} // namespace corvane::look
