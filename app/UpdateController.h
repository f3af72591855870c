// The one place where the application reaches its software updater.
#pragma once

#include "Updater.h"

#include <memory>

namespace MusicPlugin {

class UpdateController
{
public:
    // Made on first use, once, safely against concurrent first use; never released.
    static UpdateController& shared();

    Updater& updater() const { return *m_updater; }

private:
    UpdateController();

    std::unique_ptr<Updater> m_updater;
};

} // namespace MusicPlugin
