// CommandGroup: the handle, and its record with the host face.

#include "protocol/commandgroup.h"

#include <utility>

#include "helper/algorithm/string.h"
#include "protocol/empty_values.h"

namespace Quorvane {

ICommandGroupMapper::~ICommandGroupMapper() = default;

MapperChangeState CommandGroupImpl::change_state() const {
    return change_state_;
}

void CommandGroupImpl::set_change_state(MapperChangeState change_state) {
    change_state_ = change_state;
}

void CommandGroupImpl::set_flags(CommandGroupFlags flags) {
    flags_ = flags;
}

CommandGroupFlags CommandGroupImpl::flags() {
    return flags_;
}

void CommandGroupImpl::unset() {
    isset_ = false;
}

bool CommandGroupImpl::compare(const CommandGroupImpl& other) const {
    if (commands_.size() != other.commands_.size()) {
        return false;
    }
    unsigned long index = 0;
    const ConstVectorIterator<Command> end = commands_.end();
    for (ConstVectorIterator<Command> mine = commands_.begin(); mine != end; ++mine, ++index) {
        const Command* found = other.commands_.get(index);
        const Command& theirs = found != nullptr ? *found : EmptyValues::empty_Command();
        if (&*mine != &theirs && !Algorithm::equals(mine->name(), theirs.name())) {
            return false;
        }
    }
    return true;
}

CommandGroup::CommandGroup() : impl_(new CommandGroupImpl) {}

// Delegating, so that the implementation is released should copying the domain throw.
CommandGroup::CommandGroup(const char* domain) : CommandGroup() {
    impl_->domain_ = domain;
}

CommandGroup::CommandGroup(const CommandGroup& other) : impl_(new CommandGroupImpl(*other.impl_)) {}

CommandGroup& CommandGroup::operator=(CommandGroup other) {
    std::swap(impl_, other.impl_);
    return *this;
}

CommandGroup::~CommandGroup() {
    delete impl_;
    impl_ = nullptr;
}

bool CommandGroup::swap(CommandGroup& other) {
    std::swap(impl_, other.impl_);
    return true;
}

bool CommandGroup::guarded() const {
    return impl_ == EmptyValues::empty_CommandGroup().impl_;
}

bool CommandGroup::isset() const {
    return impl_->isset_;
}

bool CommandGroup::operator==(const CommandGroup& other) const {
    return this == &other || impl_->compare(*other.impl_);
}

bool CommandGroup::operator!=(const CommandGroup& other) const {
    return this != &other && !impl_->compare(*other.impl_);
}

ICommandGroupMapper* CommandGroup::mapper() {
    return impl_;
}

const char* CommandGroup::domain() const {
    return impl_->domain_.c_str();
}

void CommandGroup::set_domain(const char* domain) {
    if (!guarded()) {
        impl_->domain_ = domain;
    }
}

unsigned int CommandGroup::result() const {
    return impl_->result_;
}

void CommandGroup::set_result(unsigned int result) {
    if (!guarded()) {
        impl_->result_ = result;
    }
}

unsigned long CommandGroup::size() const {
    return impl_->commands_.size();
}

bool CommandGroup::empty() const {
    return impl_->commands_.empty();
}

void CommandGroup::reserve(unsigned long count) {
    if (!guarded()) {
        impl_->commands_.reserve(count);
    }
}

void CommandGroup::clear() {
    if (!guarded()) {
        impl_->commands_.clear();
    }
}

Command& CommandGroup::operator[](unsigned long index) const {
    Command* command = impl_->commands_.get(index);
    return command != nullptr ? *command : EmptyValues::empty_Command();
}

VectorIterator<Command> CommandGroup::find(unsigned long index) const {
    return impl_->commands_.find(index);
}

VectorIterator<Command> CommandGroup::begin_vector() {
    return impl_->commands_.begin();
}

VectorIterator<Command> CommandGroup::end_vector() {
    return impl_->commands_.end();
}

ConstVectorIterator<Command> CommandGroup::begin_vector() const {
    const Vector<Command>& commands = impl_->commands_;
    return commands.begin();
}

ConstVectorIterator<Command> CommandGroup::end_vector() const {
    const Vector<Command>& commands = impl_->commands_;
    return commands.end();
}

VectorIterator<Command> CommandGroup::insert(const VectorIterator<Command>& position,
                                             const Command& command) {
    if (guarded()) {
        return impl_->commands_.end();
    }
    return impl_->commands_.insert(position, command);
}

VectorIterator<Command> CommandGroup::remove(const VectorIterator<Command>& position) {
    return impl_->commands_.remove(position);
}

}  // namespace Quorvane
