// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QRect>
#include <QVariantAnimation>

class QCheckBox;
class QPainter;
class QStyleOption;
class QStyleOptionButton;

/// Paints a check box as a switch, with its text at the start of the line and its track at the end, as in a
/// list of settings.
namespace corvane::look {

/// Animates the knob when a visible switch is toggled. The switch owns it.
class KnobSlide final : public QVariantAnimation {
    Q_OBJECT

public:
    explicit KnobSlide(QCheckBox &box);

    /// The position of the knob of `box`: 0 for off, 1 for on.
    [[nodiscard]] static double position(const QCheckBox &box);

private:
    void slide(bool isOn);

    QCheckBox &m_box;
};

[[nodiscard]] QSize switchSize(const QStyleOptionButton &option);

/// The track of the switch, beside the text.
[[nodiscard]] QRect switchTrack(const QStyleOption &option);

/// `position` of the knob: 0 for off, 1 for on.
void paintSwitch(QPainter &painter, const QStyleOptionButton &option, double position);

} // namespace corvane::look
