// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/support/PrivateSoundServer.h"

#include "tests/support/ChildProcess.h"

#include <signal.h>

#include <QDeadlineTimer>
#include <QFile>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace corvane {

using namespace Qt::StringLiterals;

PrivateSoundServer::PrivateSoundServer()
{
    const QString socket = m_folder.filePath(u"native"_s);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"PULSE_RUNTIME_PATH"_s, m_folder.path());
    environment.remove(u"PULSE_SERVER"_s);
    m_server.setProcessEnvironment(environment);
    m_server.setStandardErrorFile(QProcess::nullDevice());
    m_server.setStandardOutputFile(QProcess::nullDevice());
    endWithThisProcess(m_server);
    m_server.start(u"pulseaudio"_s,
                   {u"-n"_s, u"--daemonize=no"_s, u"--exit-idle-time=-1"_s, u"--use-pid-file=no"_s,
                    u"--disable-shm=yes"_s, u"--realtime=no"_s, u"--high-priority=no"_s,
                    u"--log-level=info"_s, u"--log-target=newfile:"_s + m_folder.filePath(u"log"_s),
                    u"--load=module-null-sink sink_name=null rate=44100"_s,
                    u"--load=module-native-protocol-unix auth-anonymous=1 socket="_s + socket});
    qputenv("PULSE_SERVER", "unix:" + socket.toUtf8());
    qunsetenv("PULSE_RUNTIME_PATH");
    QDeadlineTimer deadline(20000);
    for (;;) {
        QProcess client;
        client.start(u"pactl"_s, {u"list"_s, u"short"_s, u"sinks"_s});
        client.waitForFinished(5000);
        if (client.readAllStandardOutput().contains("null")) {
            return;
        }
        if (deadline.hasExpired() || m_server.state() == QProcess::NotRunning) {
            qFatal("the private sound server does not come up");
        }
    }
}

PrivateSoundServer::~PrivateSoundServer()
{
    stopRecording();
    stop();
}

void PrivateSoundServer::stop()
{
    if (m_server.state() != QProcess::NotRunning) {
        m_server.kill();
        m_server.waitForFinished(5000);
    }
}

void PrivateSoundServer::hang()
{
    ::kill(static_cast<pid_t>(m_server.processId()), SIGSTOP);
}

void PrivateSoundServer::resume()
{
    ::kill(static_cast<pid_t>(m_server.processId()), SIGCONT);
}

void PrivateSoundServer::startRecording()
{
    stopRecording();
    m_recording.clear();
    endWithThisProcess(m_recorder);
    m_recorder.start(u"parec"_s, {u"--device=null.monitor"_s, u"--format=s16le"_s, u"--rate=44100"_s,
                                  u"--channels=1"_s, u"--latency-msec=5"_s, u"--raw"_s});
    if (!m_recorder.waitForStarted(5000) || !m_recorder.waitForReadyRead(10000)) {
        qFatal("the recording does not start");
    }
}

void PrivateSoundServer::stopRecording()
{
    if (m_recorder.state() != QProcess::NotRunning) {
        m_recorder.kill();
        m_recorder.waitForFinished(5000);
        m_recording += m_recorder.readAllStandardOutput();
    }
}

double PrivateSoundServer::peak()
{
    if (m_recorder.isOpen()) {
        m_recording += m_recorder.readAllStandardOutput();
    }
    int loudest = 0;
    for (qsizetype i = 0; i + 1 < m_recording.size(); i += 2) {
        qint16 sample = 0;
        std::memcpy(&sample, m_recording.constData() + i, sizeof sample);
        loudest = std::max(loudest, std::abs(static_cast<int>(sample)));
    }
    return loudest / 32768.0;
}

bool PrivateSoundServer::hasPlayed(const QString &property) const
{
    QFile log(m_folder.filePath(u"log"_s));
    if (!log.open(QIODevice::ReadOnly)) {
        qFatal("the private sound server writes no log");
    }
    // A new stream is logged with its properties, one a line, indented.
    return log.readAll().contains("    " + property.toUtf8() + '\n');
}

bool PrivateSoundServer::isSilent()
{
    if (peak() >= 0.001) {
        m_recording.clear();
    }
    return !m_recording.isEmpty();
}

} // namespace corvane
