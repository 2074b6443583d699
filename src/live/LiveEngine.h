// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace velarin::live {

class ConnectionFactory;
class EngineLoop;
class SoundPipelineFactory;

// What a live player works with: a thread, a network and a sound output. Made and destroyed on the main thread, used on
// the engine's. It outlives everything that was made with it.
class LiveEngine
{
public:
    virtual ~LiveEngine() = default;

    [[nodiscard]] virtual EngineLoop& loop() = 0;
    [[nodiscard]] virtual ConnectionFactory& connections() = 0;
    [[nodiscard]] virtual SoundPipelineFactory& pipelines() = 0;
};

}
