#pragma once
// Private to the library: not part of the API.

#include <cstdint>
#include <string>

#include "QuorvaneExtApi.h"

namespace Quorvane {

// The record behind CommandGroup, and at the same time its host face.
class CommandGroupImpl : public ICommandGroupMapper {
public:
    MapperChangeState change_state() const override;
    void set_change_state(MapperChangeState change_state) override;
    void set_flags(CommandGroupFlags flags) override;
    CommandGroupFlags flags() override;
    void unset() override;

    // Same number of commands, equal names position by position; nothing else counts.
    bool compare(const CommandGroupImpl& other) const;

    bool isset_ = true;
    std::string domain_;
    std::uint32_t result_ = 0;
    CommandGroupFlags flags_ = COMMAND_GROUP_FLAGS_NONE;
    MapperChangeState change_state_ = MAPPER_CHANGE_STATE_DEFAULT;
    Vector<Command> commands_;
};

}  // namespace Quorvane
