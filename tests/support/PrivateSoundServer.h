// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace corvane {

/// A private sound server whose only sink is a null sink; it can record what is played.
class PrivateSoundServer {
public:
    /// Starts the server, points PULSE_SERVER at it and waits up to 20 s until it answers. Ends the test
    /// program if it does not.
    PrivateSoundServer();
    ~PrivateSoundServer();
    PrivateSoundServer(const PrivateSoundServer &) = delete;
    PrivateSoundServer &operator=(const PrivateSoundServer &) = delete;

    /// Stops the server's process with SIGSTOP, so that it hangs, and resumes it.
    void hang();
    void resume();

    /// Ends the server.
    void stop();

    /// Starts a new recording of what is played and waits until it runs.
    void startRecording();

    void stopRecording();

    /// The loudest sample recorded so far, 0 to 1.
    [[nodiscard]] double peak();

    /// Whether a stream with `property`, e.g. `media.role = "event"`, has begun.
    [[nodiscard]] bool hasPlayed(const QString &property) const;

    /// Whether something was recorded and all of it is silence. An audible recording is discarded, so that a
    /// later call returns true once there is silence.
    [[nodiscard]] bool isSilent();

private:
    QTemporaryDir m_folder;
    QProcess m_server;
    QProcess m_recorder;
    QByteArray m_recording;
};

} // namespace corvane
