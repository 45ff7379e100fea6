// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QImage>
#include <QList>
#include <QTimer>

#include <chrono>
#include <functional>

namespace corvane {

/// An icon as sent over the bus: 32 bits per pixel, alpha first, in network byte order.
struct StatusIconPixmap {
    int width = 0;
    int height = 0;
    QByteArray pixels;
};
using StatusIconPixmaps = QList<StatusIconPixmap>;

/// A tool tip as sent over the bus. Hosts may read `description` as markup, but not `title`.
struct StatusToolTip {
    QString iconName;
    StatusIconPixmaps icons;
    QString title;
    QString description;
};

QDBusArgument &operator<<(QDBusArgument &argument, const StatusIconPixmap &pixmap);
const QDBusArgument &operator>>(const QDBusArgument &argument, StatusIconPixmap &pixmap);
QDBusArgument &operator<<(QDBusArgument &argument, const StatusToolTip &toolTip);
const QDBusArgument &operator>>(const QDBusArgument &argument, StatusToolTip &toolTip);

/// The item's interface on the bus, which determines the names.
class StatusNotifierItemAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category)
    Q_PROPERTY(QString Id READ id)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(int WindowId READ windowId)
    Q_PROPERTY(QString IconName READ noIconName)
    Q_PROPERTY(QString IconThemePath READ noIconName)
    Q_PROPERTY(QString IconAccessibleDesc READ accessibleText)
    Q_PROPERTY(corvane::StatusIconPixmaps IconPixmap READ icons)
    Q_PROPERTY(QString OverlayIconName READ noIconName)
    Q_PROPERTY(QString AttentionIconName READ noIconName)
    Q_PROPERTY(corvane::StatusToolTip ToolTip READ toolTip)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu)
    Q_PROPERTY(QDBusObjectPath Menu READ menu)

public:
    /// Called for the host's requests. Not signals, because those of an adaptor are sent on the bus.
    struct Handlers {
        std::function<void(int x, int y)> click; ///< where the host says it was
        std::function<void(const QString &token)> activationToken;
    };

    /// `menu` is the path of the menu's object on the bus.
    StatusNotifierItemAdaptor(QObject *parent, const QList<QImage> &icons, QString menu, Handlers handlers);

    [[nodiscard]] QString category() const;
    [[nodiscard]] QString id() const;
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString accessibleText() const;
    [[nodiscard]] QString status() const;
    [[nodiscard]] int windowId() const { return 0; }
    [[nodiscard]] QString noIconName() const { return {}; }
    [[nodiscard]] StatusIconPixmaps icons() const;
    [[nodiscard]] StatusToolTip toolTip() const;
    [[nodiscard]] bool itemIsMenu() const { return false; }
    [[nodiscard]] QDBusObjectPath menu() const;

    /// The text as set, after harmlessTitle().
    [[nodiscard]] const QString &text() const { return m_text; }

    /// Publishes `text`, already harmless, if it has changed.
    void setText(const QString &text);

    /// Publishes `notice`, already harmless, if it has changed.
    void setNotice(const QString &notice);

    /// A new host is about to accept the item.
    virtual void hostChanged() {}

public Q_SLOTS:
    void Activate(int x, int y);
    void SecondaryActivate(int x, int y);
    void ContextMenu(int x, int y);
    void Scroll(int delta, const QString &orientation);
    void ProvideXdgActivationToken(const QString &token);

Q_SIGNALS:
    void NewTitle();
    void NewToolTip();
    void NewIcon();
    void NewStatus(const QString &status);

protected:
    virtual void textChanged() {}

private:
    Handlers m_handlers;
    QString m_menu;
    QList<QImage> m_icons;
    QString m_text;
    QString m_notice;
};

/// The same with a label beside the icon.
///
/// GNOME's host draws the label only when it changes after the host has read the item, and skips a value that
/// it already has. So a new host reads an empty label, and gets the real one a pause later.
class LabelledStatusNotifierItemAdaptor final : public StatusNotifierItemAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString XAyatanaLabel READ readLabel)
    Q_PROPERTY(QString XAyatanaLabelGuide READ labelGuide)

public:
    LabelledStatusNotifierItemAdaptor(QObject *parent, const QList<QImage> &icons, QString menu,
                                      Handlers handlers, std::chrono::milliseconds pause);

    /// Called when a host reads the label.
    [[nodiscard]] QString readLabel();
    [[nodiscard]] QString labelGuide() const { return {}; }

    void hostChanged() override;

Q_SIGNALS:
    void XAyatanaNewLabel(const QString &label, const QString &guide);

protected:
    void textChanged() override;

private:
    QTimer m_pause;
    bool m_isWithheld = true;
};

} // namespace corvane

Q_DECLARE_METATYPE(corvane::StatusIconPixmap)
Q_DECLARE_METATYPE(corvane::StatusToolTip)
