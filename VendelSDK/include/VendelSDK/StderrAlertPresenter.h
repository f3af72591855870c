// Shows alerts on standard error when there is no display to show them on.
#pragma once

#include <VendelSDK/AlertPresenter.h>
#include <VendelSDK/Export.h>

#include <cstdio>

namespace VendelSDK {

/// Writes each alert to a stream and answers with the default button: the presenter of a headless launch.
class VENDELSDK_EXPORT StderrAlertPresenter final : public AlertPresenter
{
public:
    /// Writes to `stream`, which must outlive the presenter.
    explicit StderrAlertPresenter(std::FILE* stream = stderr) : m_stream(stream) {}

    int runModal(const Alert& alert) override;

    /// How many alerts were written; a headless launch that showed one did not do what it was asked.
    int shownCount() const { return m_shownCount; }

private:
    std::FILE* m_stream;
    int m_shownCount = 0;
};

} // namespace VendelSDK
