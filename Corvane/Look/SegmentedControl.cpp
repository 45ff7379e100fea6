// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/SegmentedControl.h"

#include "Corvane/Look/Controls.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/Painting.h"
#include "Corvane/Look/Stacks.h"

#include <QButtonGroup>
#include <QPainter>
#include <QRadioButton>

namespace corvane::look {

SegmentedControl::SegmentedControl(const QString &label, const QStringList &segments, QWidget *parent)
    : QWidget(parent)
    , m_segments(new QButtonGroup(this))
{
    setAccessibleName(label);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto *line = row(0, {});
    setLayout(line);
    for (const QString &text : segments) {
        auto *segment = new QRadioButton(text);
        setRole(*segment, Role::segment);
        segment->setFont(look::font(TextStyle::caption));
        segment->setFocusPolicy(Qt::TabFocus);
        segment->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        line->addWidget(segment, 1);
        m_segments->addButton(segment, static_cast<int>(m_segments->buttons().size()));
    }
    m_segments->button(0)->setChecked(true);
    connect(m_segments, &QButtonGroup::idToggled, this, [this](int index, bool isChosen) {
        if (isChosen) {
            Q_EMIT selectionChanged(index);
        }
    });
}

int SegmentedControl::selection() const
{
    return m_segments->checkedId();
}

void SegmentedControl::setSelection(int index)
{
    Q_ASSERT(m_segments->button(index) != nullptr);
    m_segments->button(index)->setChecked(true);
}

void SegmentedControl::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    fillRounded(painter, rect(), control::cornerRadius, color(Ink::primary, palette(), 0.08));
}

} // namespace corvane::look
