// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArrayList>
#include <QString>

namespace corvane {

/// The program's options.
struct CommandLine {
    enum class Request {
        run,     ///< start for the user
        login,   ///< start at login: nothing opens by itself
        version, ///< print the version
        help,    ///< print the options
        invalid  ///< print the error
    };

    Request request = Request::run;
    QString error; ///< one line; empty unless the request is invalid

    /// Parses the arguments after the program's name. Skips "-session" and its identifier, which a session
    /// manager passes to the toolkit.
    [[nodiscard]] static CommandLine parse(const QByteArrayList &arguments);

    /// The text that the help request prints.
    [[nodiscard]] static QString help();

    static constexpr auto loginOption = "--login";
    static constexpr auto versionOption = "--version";
    static constexpr auto helpOption = "--help";

    friend bool operator==(const CommandLine &, const CommandLine &) = default;
};

} // namespace corvane
