#pragma once

#include <QJsonArray>
#include <QProcess>
#include <QString>

// The local service simulator (tools/simulator/simulator.py) as a child process
// of a test, on a port of its own, over real HTTP on 127.0.0.1.
//
// Control requests of the simulator (plain GETs):
//   /_sim/fault?key=<path or path?a=value>&mode=<mode>[&target=<path>]
//       modes: none, 404, 500, 302, 301, 302loop, slow, truncated, noanswer, badjson,
//       reject, oversized
//   /_sim/set?key=<name>&value=<text>  a value the endpoints answer with
//   /_sim/reset                    faults off, records emptied
//   /_sim/records?path=<path>      JSON array of {method, path, query, headers, body}
class Simulator {
public:
    Simulator() = default;
    ~Simulator();
    Simulator(const Simulator&) = delete;
    Simulator& operator=(const Simulator&) = delete;

    // Starts the simulator on `port` (0: a free port) with `databasePath` as its
    // demo data (empty: the demo database of the build). Waits until it listens.
    bool start(int port = 0, const QString& databasePath = QString());
    void stop();

    int port() const { return listeningPort; }
    QString baseUrl() const;

    // `seconds` (for "slow") spreads the body over that many seconds; 0 keeps the default.
    bool setFault(const QString& key, const QString& mode, const QString& target = QString(), double seconds = 0);
    bool setValue(const QString& key, const QString& value);
    bool reset();
    QJsonArray records(const QString& path);

    // On the build's service port, offering the program's own version and the
    // database of `dataVersion`: a main window's start-up checks then find both
    // current, leave the base in place and wire the scanner.
    bool startOfferingCurrent(const QString& dataVersion);
    // Waits until a main window made after start() or the last wait has
    // finished its start-up checks.
    bool waitForStartupChecks();

private:
    // On Linux the simulator ends with the test process, however that ends: a
    // crashed test must not leave it holding the port and the test's stderr.
    class Process : public QProcess {
    protected:
        void setupChildProcess() override;
    };

    QByteArray control(const QString& pathAndQuery);

    Process process;
    int listeningPort = 0;
    int seenStartupPasses = 0;
};
