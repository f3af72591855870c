// Holds the test plugin stub's launches until the test lets them end, through a FIFO that the stub reads.
#pragma once

#include <QString>

namespace VendelHost::Testing {

class HeldLaunches
{
public:
    // Makes the FIFO at the path. Launches of the stub with VENDEL_STUB_HOLD set to it end at once until
    // hold() is called.
    explicit HeldLaunches(QString fifoPath);
    // Lets every held launch end.
    ~HeldLaunches();
    HeldLaunches(const HeldLaunches&) = delete;
    HeldLaunches& operator=(const HeldLaunches&) = delete;

    const QString& path() const { return m_path; }
    // From now on, the stub's launches wait (after recording themselves) until release().
    bool hold();
    // Every launch waiting ends, and later ones no longer wait.
    void release();

private:
    QString m_path;
    int m_writer = -1;
};

} // namespace VendelHost::Testing
