// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Accessible.h"

#include <QAccessibleWidget>
#include <QCheckBox>
#include <QLabel>
#include <QScrollArea>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTextDocumentFragment>
#include <QTimer>

#include <chrono>
#include <utility>

namespace corvane::look {

namespace {

constexpr auto accessibleRoleProperty = "accessibleRole";

/// The first class of the toolkit among the base classes of `widget`.
const QMetaObject *toolkitClass(const QWidget &widget)
{
    const QMetaObject *meta = widget.metaObject();
    while (QByteArrayView(meta->className()).startsWith("corvane::")) {
        meta = meta->superClass();
    }
    return meta;
}

/// Adds what the toolkit does not report: role, shown text, state and actions.
class OwnWidget final : public QAccessibleWidget {
public:
    explicit OwnWidget(QWidget *widget) : QAccessibleWidget(widget) {}

    [[nodiscard]] QAccessible::Role role() const override
    {
        if (const QVariant role = widget()->property(accessibleRoleProperty); role.isValid()) {
            return static_cast<QAccessible::Role>(role.toInt());
        }
        if (qobject_cast<QCheckBox *>(widget()) != nullptr) {
            return QAccessible::CheckBox;
        }
        if (label() != nullptr) {
            return QAccessible::StaticText;
        }
        if (widget()->isWindow()) {
            return QAccessible::Window;
        }
        return widget()->accessibleName().isEmpty() ? QAccessible::Client : QAccessible::Grouping;
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Description) {
            return widget()->accessibleDescription();
        }
        const QString text = QAccessibleWidget::text(kind);
        return kind == QAccessible::Name && text.isEmpty() ? shownText() : text;
    }

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        if (const QAbstractButton *pressed = button()) {
            state.checkable = pressed->isCheckable();
            state.checked = pressed->isChecked();
            state.pressed = pressed->isDown();
            state.linked = role() == QAccessible::Link;
        }
        return state;
    }

    [[nodiscard]] QRect rect() const override
    {
        const QRect area = QAccessibleWidget::rect();
        if (role() != QAccessible::CheckBox) {
            return area;
        }
        QStyleOptionButton option;
        option.initFrom(widget());
        return widget()
            ->style()
            ->subElementRect(QStyle::SE_CheckBoxIndicator, &option, widget())
            .translated(area.topLeft());
    }

    [[nodiscard]] QList<QPair<QAccessibleInterface *, QAccessible::Relation>>
    relations(QAccessible::Relation match) const override
    {
        auto relations = QAccessibleWidget::relations(match);
        if (label() != nullptr && label()->buddy() != nullptr && match.testFlag(QAccessible::Labelled)) {
            relations.append(
                {QAccessible::queryAccessibleInterface(label()->buddy()), QAccessible::Labelled});
        }
        return relations;
    }

    [[nodiscard]] QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (button() != nullptr && widget()->isEnabled()) {
            names.prepend(buttonAction());
        }
        return names;
    }

    void doAction(const QString &name) override
    {
        if (button() == nullptr || name != buttonAction()) {
            QAccessibleWidget::doAction(name);
        } else if (!widget()->isEnabled()) {
            return;
        } else if (button()->isCheckable()) {
            button()->toggle();
        } else {
            // Animated, so that the press is seen; delayed, so that the tool has its answer before the action
            // opens a window.
            button()->animateClick();
        }
    }

private:
    [[nodiscard]] QLabel *label() const { return qobject_cast<QLabel *>(widget()); }
    [[nodiscard]] QAbstractButton *button() const { return qobject_cast<QAbstractButton *>(widget()); }

    [[nodiscard]] QString buttonAction() const
    {
        return button()->isCheckable() ? toggleAction() : pressAction();
    }

    [[nodiscard]] QString shownText() const
    {
        if (const QLabel *shown = label()) {
            return shown->textFormat() == Qt::RichText
                       ? QTextDocumentFragment::fromHtml(shown->text()).toPlainText()
                       : shown->text();
        }
        return button() != nullptr ? button()->text() : QString();
    }
};

QAccessibleInterface *makeOwn(const QString &, QObject *object)
{
    auto *widget = qobject_cast<QWidget *>(object);
    if (widget == nullptr) {
        return nullptr;
    }
    const QMetaObject *base = toolkitClass(*widget);
    const bool isOwn = base != widget->metaObject() &&
                       (base == &QWidget::staticMetaObject || base == &QLabel::staticMetaObject ||
                        base == &QScrollArea::staticMetaObject);
    const bool isTold = widget->property(accessibleRoleProperty).isValid();
    return isOwn || isTold || base == &QCheckBox::staticMetaObject ? new OwnWidget(widget) : nullptr;
}

} // namespace

void installAccessibility()
{
    QAccessible::installFactory(makeOwn);
}

void setAccessibleRole(QWidget &widget, QAccessible::Role role)
{
    widget.setProperty(accessibleRoleProperty, std::to_underlying(role));
    // A button already has the toolkit's interface, made when its text was set: discard it.
    if (auto *known = QAccessible::queryAccessibleInterface(&widget);
        dynamic_cast<OwnWidget *>(known) == nullptr) {
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(known));
    }
}

#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)

void announce(QWidget &widget, const QString &text)
{
    QAccessibleAnnouncementEvent announcement(&widget, text);
    QAccessible::updateAccessibility(&announcement);
}

void describe(QWidget &widget, const QString &description)
{
    widget.setAccessibleDescription(description);
}

void setAnnounced(QWidget &widget)
{
    setAccessibleRole(widget, QAccessible::AlertMessage);
}

void announceShown(QWidget &widget, const QString &text)
{
    announce(widget, text);
}

#else

void announce(QWidget &widget, const QString &text)
{
    // Screen readers read out a notification that appears. This one is invisible and stays long enough for
    // them to query it.
    constexpr std::chrono::seconds stay{10};
    auto *notification = new QWidget(widget.window());
    notification->setAttribute(Qt::WA_TransparentForMouseEvents);
    notification->resize(0, 0);
    setAnnounced(*notification);
    notification->setAccessibleName(text);
    notification->show();
    QTimer::singleShot(stay, notification, &QObject::deleteLater);
}

void describe(QWidget &widget, const QString &description)
{
    const bool isNews = widget.hasFocus() && description != widget.accessibleDescription();
    widget.setAccessibleDescription(description);
    // The toolkit reports the change, but not the new description.
    if (isNews) {
        announce(widget, description);
    }
}

void setAnnounced(QWidget &widget)
{
    setAccessibleRole(widget, QAccessible::Notification);
}

void announceShown(QWidget &, const QString &)
{
    // The toolkit reports that the widget appeared, and the screen reader reads its content.
}

#endif

} // namespace corvane::look
