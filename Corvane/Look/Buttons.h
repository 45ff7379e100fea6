// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Look/Look.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QKeySequence>
#include <QPushButton>
#include <QRadioButton>
#include <QStringList>

namespace corvane::look {

/// A button that does something. Its text is its name for a screen reader; Enter and Space press it. That of
/// a plain one breaks into lines where it is too long for one.
class Button final : public QPushButton {
    Q_OBJECT

public:
    enum class Kind {
        plain,     ///< a row of a list of commands: no edge, the text at its beginning
        bordered,  ///< an ordinary one
        prominent, ///< the one that leads on
        link,      ///< a text in the accent's colour
        quietLink, ///< a small text that stands back, underlined
    };

    /// `symbolName` may be empty.
    Button(const QString &text, Kind kind, const QString &symbolName = {}, QWidget *parent = nullptr);

    /// Presses the button by `keys` as well, while its window is in front; a plain one shows them at its end.
    void setKeys(const QKeySequence &keys);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return m_kind == Kind::plain; }
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    [[nodiscard]] int symbolSize() const;
    [[nodiscard]] bool isLink() const { return m_kind == Kind::link || m_kind == Kind::quietLink; }
    [[nodiscard]] TextStyle textStyle() const;
    [[nodiscard]] int symbolGap() const; ///< between the symbol and the text, if there is one

    Kind m_kind;
    QString m_symbolName;
    QString m_keys; ///< as the desktop writes them
};

/// Something that is on or off. Space turns it.
class Switch final : public QCheckBox {
    Q_OBJECT

public:
    explicit Switch(const QString &text, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    [[nodiscard]] bool hitButton(const QPoint &position) const override;

private:
    [[nodiscard]] QSize knobArea() const;
};

/// One of a few choices, all of them seen at once. Tab reaches the one that is chosen, the arrow keys choose.
class SegmentedPicker final : public QWidget {
    Q_OBJECT

public:
    /// `label` is its name for a screen reader; the first of `segments` is chosen.
    SegmentedPicker(const QString &label, const QStringList &segments, QWidget *parent = nullptr);

    [[nodiscard]] int selection() const { return m_selection; }
    void setSelection(int index);

Q_SIGNALS:
    /// The user, or setSelection(), chose another segment.
    void selectionChanged(int index);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QList<QRadioButton *> m_segments;
    int m_selection = 0;
};

} // namespace corvane::look
