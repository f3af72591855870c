// The FIFO is held open for reading and writing, so opening it never blocks the test; the stub's read
// waits while any writer has it open and sees its end when the last one closes it.
#include "HeldLaunches.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace VendelHost::Testing {

HeldLaunches::HeldLaunches(QString fifoPath) : m_path(std::move(fifoPath))
{
    ::mkfifo(QFile::encodeName(m_path).constData(), 0600);
}

HeldLaunches::~HeldLaunches()
{
    release();
}

bool HeldLaunches::hold()
{
    if (m_writer < 0) {
        m_writer = ::open(QFile::encodeName(m_path).constData(), O_RDWR | O_CLOEXEC);
    }
    return m_writer >= 0;
}

void HeldLaunches::release()
{
    if (m_writer >= 0) {
        ::close(m_writer);
        m_writer = -1;
    }
}

} // namespace VendelHost::Testing
