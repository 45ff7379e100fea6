// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace corvane {

/// A sound server of the test's own whose only sink plays into nothing, and what was played there.
class PrivateSoundServer {
public:
    /// Starts the server, points PULSE_SERVER at it and waits until it answers. Ends the test program when it
    /// does not come up.
    PrivateSoundServer();
    ~PrivateSoundServer();
    PrivateSoundServer(const PrivateSoundServer &) = delete;
    PrivateSoundServer &operator=(const PrivateSoundServer &) = delete;

    /// Makes the server hang, as with SIGSTOP, and go on.
    void hang();
    void resume();

    /// Ends it.
    void stop();

    /// Starts to record anew what is played, and waits until the recording runs.
    void startRecording();

    /// Ends the recording.
    void stopRecording();

    /// The loudest sample recorded so far, 0 to 1.
    [[nodiscard]] double peak();

    /// Whether something was recorded and nothing of it can be heard. What can be heard is then forgotten, so
    /// that it becomes true once there is silence.
    [[nodiscard]] bool isSilent();

private:
    QTemporaryDir m_folder;
    QProcess m_server;
    QProcess m_recorder;
    QByteArray m_recording;
};

} // namespace corvane
