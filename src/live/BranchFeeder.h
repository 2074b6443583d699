// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/Reserve.h"
#include "live/SoundPipeline.h"

#include <map>
#include <optional>

namespace velarin::live {

// Hands the reserve on to the pipeline as fast as it asks: a branch for each stretch, one after the other. The next
// branch is opened before the former one ends, since the pipeline would otherwise take the end for the end of all.
class BranchFeeder
{
public:
    explicit BranchFeeder(SoundPipeline& pipeline);

    // A stretch of sound begins that does not join what came before.
    void startStretch(SoundFormat format, std::optional<qint64> claimedBitRate);
    // Answers the seconds of sound that the bytes completed: `lasting` if that is known, else counted.
    Seconds add(QByteArrayView bytes, std::optional<Seconds> lasting = std::nullopt);

    void needsBytes(BranchId branch);
    // The branch is gone. Answers whether it was the one that the newest sound belongs to.
    [[nodiscard]] bool branchFailed(BranchId branch);

    // Where the branch's sound begins, in seconds of sound added before it.
    [[nodiscard]] Seconds placeOf(BranchId branch) const;
    // The sound not handed on.
    [[nodiscard]] const Reserve& reserve() const { return m_reserve; }

private:
    void feed();
    void openBranch();

    SoundPipeline& m_pipeline;
    Reserve m_reserve;
    // Of the oldest stretch; absent while it has no bytes, or when it cannot be played.
    std::optional<BranchId> m_branch;
    // Of the latest branches.
    std::map<BranchId, Seconds> m_places;
    bool m_hasRoom{ false };
    // The oldest stretch lost its branch: what it still gets is not played.
    bool m_isRefused{ false };
};

}
