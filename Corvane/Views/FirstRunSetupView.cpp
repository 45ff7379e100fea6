// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/FirstRunSetupView.h"

#include "Corvane/Look/Accessible.h"
#include "Corvane/Look/Controls.h"
#include "Corvane/Look/PageSlide.h"
#include "Corvane/Look/Scrolling.h"
#include "Corvane/Look/Stacks.h"
#include "Corvane/Look/SymbolView.h"
#include "Corvane/Look/Text.h"
#include "Corvane/Settings/AppSettings.h"
#include "Corvane/Views/PageIndicator.h"
#include "Corvane/Views/SetupStep.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QPushButton>
#include <QScrollBar>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

using namespace look;

namespace {

int lastStep()
{
    return static_cast<int>(setupSteps().size()) - 1;
}

/// `widget`, centred horizontally.
QLayout *inTheMiddle(QWidget *widget)
{
    return row(0, {Spacer{}, widget, Spacer{}});
}

} // namespace

FirstRunSetupView::FirstRunSetupView(AppSettings &settings, std::function<void()> dismiss, QWidget *parent)
    : QWidget(parent)
    , m_settings(settings)
    , m_dismiss(std::move(dismiss))
    , m_symbol(new SymbolView(setupSteps().front().symbolName, setup::symbolSize, Ink::accent))
    , m_title(heading(new Text({}, TextStyle::largeTitle, QFont::Bold)))
    , m_detail(new Text({}, TextStyle::title3))
    , m_indicator(new PageIndicator(lastStep() + 1))
    , m_back(pushButton(u"Back"_s))
    , m_forward(pushButton({}, Role::prominent))
{
    setMinimumSize(setup::minimumWidth, setup::minimumHeight);
    m_title->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    m_detail->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    m_title->setBalanced();
    m_detail->setBalanced();

    auto *page = new QWidget;
    page->setLayout(column(setup::spacing, {inTheMiddle(m_symbol), m_title, m_detail}));
    m_page = scrolling(page);

    auto *buttons = new QWidget;
    buttons->setFixedWidth(setup::textWidth);
    buttons->setLayout(row(0, {m_back, Spacer{}, m_forward}));

    auto *stack = padded(
        {setup::padding, setup::padding, setup::padding, setup::padding},
        column(setup::spacing, {Spacer{}, m_page, inTheMiddle(m_indicator), inTheMiddle(buttons), Spacer{}}));
    stack->setStretchFactor(m_page, 1); // grows up to its content's height; scrolls below that
    setLayout(stack);

    connect(m_back, &QAbstractButton::clicked, this, &FirstRunSetupView::goBack);
    connect(m_forward, &QAbstractButton::clicked, this, &FirstRunSetupView::goForward);
    followDesktopFont(*this);
    reserveRoom();
    showStep();
}

void FirstRunSetupView::goBack()
{
    if (m_step > 0) {
        turnTo(m_step - 1);
    }
}

void FirstRunSetupView::goForward()
{
    if (m_step < lastStep()) {
        turnTo(m_step + 1);
        return;
    }
    m_settings.setHasCompletedWelcome(true);
    m_dismiss();
}

void FirstRunSetupView::turnTo(int step)
{
    const bool isForward = step > m_step;
    slidePage(*m_page->viewport(), isForward, [this, step] {
        m_step = step;
        showStep();
    });
}

void FirstRunSetupView::showStep()
{
    const SetupStep &step = setupSteps().at(static_cast<std::size_t>(m_step));
    m_symbol->setSymbol(step.symbolName);
    m_title->setText(step.title);
    m_detail->setText(step.detail);
    m_indicator->setPage(m_step);
    m_page->verticalScrollBar()->setValue(0);
    m_back->setEnabled(m_step > 0);
    m_forward->setText(m_step < lastStep() ? u"Continue"_s : u"Finish"_s);
    // The focus stays on the button, so that it can be pressed again. A screen reader says the focused
    // button's description when it changes, hence the page's text goes there.
    const QString page = step.title + u". "_s + step.detail;
    describe(*m_back, page);
    describe(*m_forward, page);
}

void FirstRunSetupView::reserveRoom()
{
    // Each page gets the height of the tallest, so that the buttons stay under the pointer.
    const auto tallest = [](const QFont &font, QString SetupStep::*text) {
        int height = 0;
        for (const SetupStep &step : setupSteps()) {
            const QRect area = QFontMetrics(font).boundingRect(QRect(0, 0, setup::textWidth, QWIDGETSIZE_MAX),
                                                               Qt::TextWordWrap, step.*text);
            height = std::max(height, area.height());
        }
        return height;
    };
    const int titleHeight = tallest(m_title->font(), &SetupStep::title);
    const int detailHeight = tallest(m_detail->font(), &SetupStep::detail);
    m_title->setFixedHeight(titleHeight);
    m_detail->setFixedHeight(detailHeight);
    const int height = setup::symbolSize + titleHeight + detailHeight + 2 * setup::spacing;
    m_page->widget()->setFixedSize(setup::textWidth, height);
    m_page->setMaximumHeight(height);
}

int FirstRunSetupView::heightForWidth(int) const
{
    return m_page->maximumHeight() + m_indicator->sizeHint().height() + m_back->sizeHint().height() +
           2 * setup::spacing + 2 * setup::padding;
}

void FirstRunSetupView::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        reserveRoom();
    }
}

void FirstRunSetupView::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_forward->setFocus(Qt::OtherFocusReason);
}

void FirstRunSetupView::keyPressEvent(QKeyEvent *event)
{
    QScrollBar *bar = m_page->verticalScrollBar();
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!event->isAutoRepeat()) {
            m_forward->click();
        }
        break;
    case Qt::Key_PageDown:
        bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
        break;
    case Qt::Key_PageUp:
        bar->triggerAction(QAbstractSlider::SliderPageStepSub);
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace corvane
