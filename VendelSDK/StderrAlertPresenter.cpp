// Writes the alert's texts to a stream and answers with the default button.
#include <VendelSDK/StderrAlertPresenter.h>

namespace VendelSDK {

int StderrAlertPresenter::runModal(const Alert& alert)
{
    ++m_shownCount;
    std::fputs(alert.messageText.toUtf8().constData(), m_stream);
    std::fputc('\n', m_stream);
    if (!alert.informativeText.isEmpty()) {
        std::fputs(alert.informativeText.toUtf8().constData(), m_stream);
        std::fputc('\n', m_stream);
    }
    std::fflush(m_stream);
    return 0;
}

} // namespace VendelSDK
