// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QRect>
#include <QVariantAnimation>

class QCheckBox;
class QPainter;
class QStyleOption;
class QStyleOptionButton;

/// How a check box looks: as a switch, with its text at the beginning of the line and its knob at the end, as
/// in a list of settings.
namespace corvane::look {

/// Slides the knob of a switch that is turned while it is seen. Belongs to the switch.
class KnobSlide final : public QVariantAnimation {
    Q_OBJECT

public:
    explicit KnobSlide(QCheckBox &box);

    /// Where the knob of `box` is: 0 for off, 1 for on.
    [[nodiscard]] static double position(const QCheckBox &box);

private:
    void slide(bool isOn);

    QCheckBox &m_box;
};

[[nodiscard]] QSize switchSize(const QStyleOptionButton &option);

/// What is turned, beside the text.
[[nodiscard]] QRect switchTrack(const QStyleOption &option);

/// `position` is that of the knob.
void paintSwitch(QPainter &painter, const QStyleOptionButton &option, double position);

} // namespace corvane::look
