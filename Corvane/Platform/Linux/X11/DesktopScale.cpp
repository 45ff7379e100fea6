// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/X11/DesktopScale.h"

#include "Corvane/Platform/Linux/X11/XcbRef.h"

#include <xcb/xcb.h>

#include <QDataStream>
#include <QList>

namespace corvane {

using namespace x11;

namespace {

xcb_atom_t atomOf(xcb_connection_t *server, const QByteArray &name)
{
    const auto asked = xcb_intern_atom(server, 1, static_cast<std::uint16_t>(name.size()), name.constData());
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(server, asked, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

QByteArray bytesOf(xcb_connection_t *server, xcb_window_t window, xcb_atom_t property)
{
    constexpr std::uint32_t most = 16384; // in units of four bytes
    const auto asked = xcb_get_property(server, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, most);
    const Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(server, asked, nullptr));
    if (!reply) {
        return {};
    }
    return {static_cast<const char *>(xcb_get_property_value(reply.get())),
            xcb_get_property_value_length(reply.get())};
}

/// The length of a text of `length` bytes with its padding to a multiple of four.
int padded(int length)
{
    constexpr int unit = 4;
    return (length + unit - 1) / unit * unit;
}

/// Reads a text that is preceded by its length.
template <typename Length>
QByteArray text(QDataStream &in, qsizetype longest)
{
    Length length = 0;
    in >> length;
    if (in.status() != QDataStream::Ok || length > longest) {
        in.setStatus(QDataStream::ReadCorruptData);
        return {};
    }
    QByteArray read(padded(static_cast<int>(length)), '\0');
    in.readRawData(read.data(), static_cast<int>(read.size()));
    read.truncate(length);
    return read;
}

} // namespace

std::optional<int> desktopScale::number(const QByteArray &settings, const QByteArray &name)
{
    enum class Kind : quint8 { number, text, colour };
    constexpr int serial = 4; // the length of a serial number in bytes
    QDataStream in(settings);
    quint8 order = 0;
    in >> order;
    in.setByteOrder(order == 0 ? QDataStream::LittleEndian : QDataStream::BigEndian);
    in.skipRawData(3 + serial);
    quint32 count = 0;
    in >> count;
    for (quint32 at = 0; at < count && in.status() == QDataStream::Ok; ++at) {
        quint8 kind = 0;
        in >> kind;
        in.skipRawData(1);
        // The length of a name has two bytes, and nothing lies between it and the name.
        const QByteArray found = text<quint16>(in, settings.size());
        in.skipRawData(serial);
        switch (Kind{kind}) {
        case Kind::number: {
            qint32 value = 0;
            in >> value;
            if (found == name && in.status() == QDataStream::Ok) {
                return value;
            }
            break;
        }
        case Kind::text:
            (void)text<quint32>(in, settings.size());
            break;
        case Kind::colour:
            in.skipRawData(8);
            break;
        default:
            return std::nullopt;
        }
    }
    return std::nullopt;
}

bool desktopScale::isMissingOn(const QByteArray &desktop)
{
    return desktop.toLower().split(':').contains("xfce");
}

std::optional<int> desktopScale::missingFactor(const QByteArray &settings)
{
    constexpr int largest = 4;
    const auto factor = number(settings, "Gdk/WindowScalingFactor");
    return factor && *factor > 1 && *factor <= largest ? factor : std::nullopt;
}

QByteArray desktopScale::publishedSettings()
{
    int screen = 0;
    const OwnConnection server(xcb_connect(nullptr, &screen));
    if (xcb_connection_has_error(server.get()) != 0) {
        return {};
    }
    const xcb_atom_t selection = atomOf(server.get(), "_XSETTINGS_S" + QByteArray::number(screen));
    const xcb_atom_t property = atomOf(server.get(), "_XSETTINGS_SETTINGS");
    if (selection == XCB_ATOM_NONE || property == XCB_ATOM_NONE) {
        return {};
    }
    const auto asked = xcb_get_selection_owner(server.get(), selection);
    const Owned<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(server.get(), asked, nullptr));
    return owner && owner->owner != XCB_NONE ? bytesOf(server.get(), owner->owner, property) : QByteArray();
}

} // namespace corvane
