// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/CommandLine.h"

#include "Corvane/Utilities/PlainText.h"

using namespace Qt::StringLiterals;

namespace corvane {

CommandLine CommandLine::parse(const QByteArrayList &arguments)
{
    CommandLine line;
    for (qsizetype at = 0; at < arguments.size(); ++at) {
        const QByteArray &argument = arguments.at(at);
        if (argument == versionOption) {
            return {.request = Request::version, .error = {}};
        }
        if (argument == helpOption) {
            return {.request = Request::help, .error = {}};
        }
        if (argument == loginOption) {
            line.request = Request::login;
        } else if (argument == "-session" && at + 1 < arguments.size()) {
            ++at;
        } else {
            return {.request = Request::invalid,
                    .error = u"quillet: unknown option “%1”; try “quillet --help”."_s.arg(
                        plainText(QString::fromLocal8Bit(argument)))};
        }
    }
    return line;
}

QString CommandLine::help()
{
    return u"Usage: quillet [OPTION]\n"
           "A bell in the desktop's panel that gets an online teacher from one lesson into the next on "
           "time.\n"
           "\n"
           "  --login    start as the desktop does at login: nothing opens by itself\n"
           "  --version  print the version\n"
           "  --help     print this help\n"
           "\n"
           "If Quillet is already running, it opens today's schedule. Everything else is set in its Settings "
           "window;\n"
           "see also the manual page quillet(1).\n"_s;
}

} // namespace corvane
