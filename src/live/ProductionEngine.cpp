// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/ProductionEngine.h"

#include "live/GstSoundPipeline.h"

#include <utility>

namespace velarin::live {

namespace {

class ProductionEngine final : public LiveEngine
{
public:
    ProductionEngine(std::shared_ptr<DeviceSelection> selection, TransportSettings transport)
        : m_thread(std::make_unique<LiveThread>(std::move(transport)))
        , m_pipelines(*m_thread, std::move(selection))
    {
    }
    // Before the factory, which work that is still posted may use.
    ~ProductionEngine() override { m_thread.reset(); }

    [[nodiscard]] EngineLoop& loop() override { return *m_thread; }
    [[nodiscard]] ConnectionFactory& connections() override { return *m_thread; }
    [[nodiscard]] SoundPipelineFactory& pipelines() override { return m_pipelines; }

private:
    std::unique_ptr<LiveThread> m_thread;
    GstSoundPipelineFactory m_pipelines;
};

}

std::shared_ptr<LiveEngine> startProductionEngine(
    std::shared_ptr<DeviceSelection> selection, TransportSettings transport)
{
    return std::make_shared<ProductionEngine>(std::move(selection), std::move(transport));
}

}
