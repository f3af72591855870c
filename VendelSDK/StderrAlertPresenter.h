// Shows alerts on standard error when there is no display to show them on.
#pragma once

#include "AlertPresenter.h"

#include <cstdio>

namespace VendelSDK {

class StderrAlertPresenter final : public AlertPresenter
{
public:
    explicit StderrAlertPresenter(std::FILE* stream = stderr) : m_stream(stream) {}

    int runModal(const Alert& alert) override;

private:
    std::FILE* m_stream;
};

} // namespace VendelSDK
