// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/X11/XcbRef.h"

#include <xcb/xcb.h>

#include <QByteArray>
#include <QDataStream>
#include <QIODevice>

#include <string_view>

namespace corvane {

/// Writes settings as a desktop publishes them.
class PublishedSettings {
public:
    explicit PublishedSettings(QDataStream::ByteOrder order)
    {
        m_out.setByteOrder(order);
        m_out << quint8(order == QDataStream::BigEndian) << quint8(0) << quint16(0) << quint32(7);
    }

    PublishedSettings &number(const QByteArray &name, qint32 value)
    {
        begin(0, name);
        m_out << value;
        return *this;
    }
    PublishedSettings &text(const QByteArray &name, const QByteArray &value)
    {
        begin(1, name);
        m_out << quint32(value.size());
        padded(value);
        return *this;
    }
    PublishedSettings &colour(const QByteArray &name)
    {
        begin(2, name);
        m_out << quint16(1) << quint16(2) << quint16(3) << quint16(4);
        return *this;
    }
    PublishedSettings &unknown(const QByteArray &name)
    {
        begin(3, name);
        return *this;
    }

    [[nodiscard]] QByteArray bytes() const
    {
        QByteArray count;
        QDataStream out(&count, QIODevice::WriteOnly);
        out.setByteOrder(m_out.byteOrder());
        out << m_count;
        constexpr qsizetype head = 8;
        return m_bytes.first(head) + count + m_bytes.sliced(head);
    }

private:
    void begin(quint8 kind, const QByteArray &name)
    {
        ++m_count;
        m_out << kind << quint8(0) << quint16(name.size());
        padded(name);
        m_out << quint32(1);
    }
    void padded(const QByteArray &text)
    {
        const auto length = static_cast<int>(text.size());
        m_out.writeRawData(text.constData(), length);
        for (int at = length; at % 4 != 0; ++at) {
            m_out << quint8(0);
        }
    }

    QByteArray m_bytes;
    QDataStream m_out{&m_bytes, QIODevice::WriteOnly};
    quint32 m_count = 0;
};

/// Publishes settings on the X server during its lifetime.
class SettingsPublisher {
public:
    explicit SettingsPublisher(const QByteArray &settings)
    {
        xcb_connection_t *server = m_server.get();
        const xcb_window_t window = xcb_generate_id(server);
        const auto *screen = xcb_setup_roots_iterator(xcb_get_setup(server)).data;
        xcb_create_window(server, XCB_COPY_FROM_PARENT, window, screen->root, -1, -1, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        const xcb_atom_t property = atom("_XSETTINGS_SETTINGS");
        xcb_change_property(server, XCB_PROP_MODE_REPLACE, window, property, property, 8,
                            static_cast<std::uint32_t>(settings.size()), settings.constData());
        xcb_set_selection_owner(server, window, atom("_XSETTINGS_S0"), XCB_CURRENT_TIME);
        (void)atom("QUILLET_ROUND_TRIP"); // afterwards the server has done all of it
    }

    void waitForTheServersEnd() const
    {
        while (const x11::Owned<xcb_generic_event_t> event{xcb_wait_for_event(m_server.get())}) {
        }
    }

private:
    xcb_atom_t atom(std::string_view name)
    {
        const auto asked =
            xcb_intern_atom(m_server.get(), 0, static_cast<std::uint16_t>(name.size()), name.data());
        const x11::Owned<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(m_server.get(), asked, nullptr));
        return reply->atom;
    }

    x11::OwnConnection m_server{xcb_connect(nullptr, nullptr)};
};

} // namespace corvane
