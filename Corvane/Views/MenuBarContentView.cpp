// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/MenuBarContentView.h"

#include "Corvane/Look/Look.h"
#include "Corvane/Look/Stacks.h"
#include "Corvane/Look/Surfaces.h"
#include "Corvane/Look/Text.h"
#include "Corvane/Views/MenuCommandRow.h"
#include "Corvane/Views/ScheduleStatusView.h"

#include <QKeySequence>
#include <QShowEvent>

#include <optional>
#include <vector>

namespace corvane {

using namespace look;

namespace {

/// The commands with lines between their groups. A row's highlight reaches a little beyond its text; this is
/// taken from the space between the texts.
QLayout *commandRows(const std::vector<MenuCommand> &commands)
{
    constexpr int aroundLine = menu::spacing - control::rowPadding;
    constexpr int between = menu::spacing - 2 * control::rowPadding;
    auto *rows = column(0, {});
    for (const MenuCommand &command : commands) {
        if (command.beginsGroup) {
            rows->addSpacing(rows->count() == 0 ? 0 : aroundLine);
            rows->addWidget(new Divider);
            rows->addSpacing(aroundLine);
        } else {
            rows->addSpacing(between);
        }
        auto *button = new MenuCommandRow(command.text);
        if (!command.shortcut.isEmpty()) {
            button->setKeys(QKeySequence(command.shortcut, QKeySequence::PortableText));
        }
        QObject::connect(button, &QAbstractButton::clicked, button, [action = command.action] { action(); });
        rows->addWidget(button);
    }
    return rows;
}

} // namespace

MenuBarContentView::MenuBarContentView(MenuBarViewModel &viewModel, const MenuActions &actions,
                                       QWidget *parent)
    : QWidget(parent)
    , m_viewModel(viewModel)
    , m_actions(actions)
    , m_error(new Text({}, TextStyle::caption, Ink::red))
{
    setFixedWidth(menu::width);
    followDesktopFont(*this);
    // Aligned with the commands' texts.
    m_error->setContentsMargins(control::rowInset, 0, control::rowInset, 0);
    setLayout(padded(
        {menu::horizontalPadding, menu::verticalPadding, menu::horizontalPadding, menu::verticalPadding},
        column(menu::spacing,
               {new ScheduleStatusView(viewModel), m_error, commandRows(menuCommands(viewModel, actions))})));
    connect(&viewModel, &MenuBarViewModel::lastErrorMessageChanged, this, &MenuBarContentView::showError);
    showError();
}

QSize MenuBarContentView::sizeHint() const
{
    // The height of wrapped text depends on the width; size hints ignore that.
    return {menu::width, layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(menu::width)
                                                       : layout()->totalSizeHint().height()};
}

void MenuBarContentView::showError()
{
    const std::optional<QString> &message = m_viewModel.lastErrorMessage();
    m_error->setText(message.value_or(QString()));
    m_error->setVisible(message.has_value());
}

void MenuBarContentView::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous()) {
        openSetupUnlessCompleted(m_viewModel, m_actions);
    }
}

} // namespace corvane
