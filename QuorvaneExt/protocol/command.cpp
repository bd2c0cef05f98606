// Command: the handle, and its record with the host face.

#include "protocol/command.h"

#include <utility>

#include "helper/algorithm/string.h"
#include "protocol/empty_values.h"

namespace Quorvane {
namespace {

constexpr std::uint32_t kChangeBits = INTERNAL_COMMAND_CHANGED | INTERNAL_COMMAND_UNCHANGED;

}  // namespace

ICommandMapper::~ICommandMapper() = default;

void CommandImpl::set_flags(InternalCommandOption flags) {
    flags_ = flags;
}

InternalCommandOption CommandImpl::flags() const {
    return flags_;
}

void CommandImpl::set_last_sent(long last_sent) {
    last_sent_ = last_sent;
}

long CommandImpl::last_sent() const {
    return last_sent_;
}

void CommandImpl::set_path(const char* path) {
    path_ = path;
}

void CommandImpl::set_symbol_name(const char* symbol_name) {
    symbol_name_ = symbol_name;
}

const char* CommandImpl::symbol_name() const {
    return symbol_name_.c_str();
}

void CommandImpl::set_mapping(const char* mapping) {
    mapping_ = mapping;
}

void CommandImpl::set_domain(const char* domain) {
    domain_ = domain;
}

void CommandImpl::set_result(ErrorValue result) {
    // A new outcome is news for the client, whatever the extension declared before.
    if (result != result_) {
        mark_changed(true);
    }
    result_ = result;
}

void CommandImpl::set_hash(unsigned int hash) {
    hash_ = hash;
}

unsigned int CommandImpl::hash() const {
    return hash_;
}

void CommandImpl::unset() {
    isset_ = false;
}

void CommandImpl::set_symbol_options(const Value& symbol_options) {
    if (symbol_options_) {
        *symbol_options_ = symbol_options;
    } else {
        symbol_options_.emplace(symbol_options);
    }
}

void CommandImpl::mark_changed(bool changed) {
    const std::uint32_t bit = changed ? INTERNAL_COMMAND_CHANGED : INTERNAL_COMMAND_UNCHANGED;
    flags_ = static_cast<InternalCommandOption>((flags_ & ~kChangeBits) | bit);
}

Value& CommandImpl::paging() {
    if (!paging_) {
        paging_.emplace();
    }
    return *paging_;
}

Value& CommandImpl::symbol_options() {
    if (!symbol_options_) {
        symbol_options_.emplace();
    }
    return *symbol_options_;
}

Command::Command() : impl_(new CommandImpl) {}

// Delegating, so that the implementation is released should copying the name throw.
Command::Command(const char* name) : Command() {
    impl_->name_ = name;
}

Command::Command(const Command& other) : impl_(new CommandImpl(*other.impl_)) {}

Command& Command::operator=(Command other) {
    std::swap(impl_, other.impl_);
    return *this;
}

Command::~Command() {
    delete impl_;
    impl_ = nullptr;
}

bool Command::swap(Command& other) {
    std::swap(impl_, other.impl_);
    return true;
}

bool Command::guarded() const {
    return impl_ == EmptyValues::empty_Command().impl_;
}

bool Command::isset() const {
    return impl_->isset_;
}

bool Command::operator==(const Command& other) const {
    return this == &other || Algorithm::equals(impl_->name_.c_str(), other.impl_->name_.c_str());
}

bool Command::operator!=(const Command& other) const {
    return this != &other && !Algorithm::equals(impl_->name_.c_str(), other.impl_->name_.c_str());
}

ICommandMapper* Command::mapper() {
    return impl_;
}

const ICommandMapper* Command::mapper() const {
    return impl_;
}

const char* Command::name() const {
    return impl_->name_.c_str();
}

const char* Command::domain() const {
    return impl_->domain_.c_str();
}

const char* Command::mapping() const {
    return impl_->mapping_.c_str();
}

const char* Command::path() const {
    return impl_->path_.c_str();
}

const char* Command::customer_data() const {
    return impl_->customer_data_.c_str();
}

const char* Command::result_string() const {
    return impl_->result_string_.c_str();
}

ErrorValue Command::result() const {
    return impl_->result_;
}

unsigned int Command::extension_result() const {
    return impl_->extension_result_;
}

CommandOption Command::options() const {
    return impl_->options_;
}

bool Command::changed() const {
    return (impl_->flags_ & INTERNAL_COMMAND_CHANGED) != 0;
}

void Command::set_name(const char* name) {
    if (!guarded()) {
        impl_->name_ = name;
    }
}

void Command::set_customer_data(const char* customer_data) {
    if (!guarded()) {
        impl_->customer_data_ = customer_data;
    }
}

void Command::set_result_string(const char* result_string) {
    if (!guarded()) {
        impl_->result_string_ = result_string;
    }
}

void Command::set_extension_result(unsigned int extension_result) {
    if (!guarded()) {
        impl_->extension_result_ = extension_result;
    }
}

void Command::set_options(CommandOption options) {
    if (!guarded()) {
        impl_->options_ = options;
    }
}

void Command::set_changed(bool changed) {
    if (!guarded()) {
        impl_->mark_changed(changed);
    }
}

Value& Command::read_value() {
    return guarded() ? EmptyValues::empty_Value() : impl_->read_value_;
}

const Value& Command::read_value() const {
    return guarded() ? EmptyValues::empty_Value() : impl_->read_value_;
}

Value& Command::write_value() {
    return guarded() ? EmptyValues::empty_Value() : impl_->write_value_;
}

const Value& Command::write_value() const {
    return guarded() ? EmptyValues::empty_Value() : impl_->write_value_;
}

void Command::set_read_value(const Value& value) {
    if (!guarded()) {
        impl_->read_value_ = value;
    }
}

void Command::set_write_value(const Value& value) {
    if (!guarded()) {
        impl_->write_value_ = value;
    }
}

bool Command::has_paging() const {
    return !guarded() && impl_->paging_ && !impl_->paging_->empty();
}

bool Command::has_symbol_options() const {
    return !guarded() && impl_->symbol_options_ && !impl_->symbol_options_->empty();
}

Value& Command::paging() {
    return guarded() ? EmptyValues::empty_Value() : impl_->paging();
}

const Value& Command::paging() const {
    return guarded() ? EmptyValues::empty_Value() : impl_->paging();
}

Value& Command::symbol_options() {
    return guarded() ? EmptyValues::empty_Value() : impl_->symbol_options();
}

const Value& Command::symbol_options() const {
    return guarded() ? EmptyValues::empty_Value() : impl_->symbol_options();
}

Timestamp Command::processed_start() const {
    return guarded() ? EmptyValues::empty_Timestamp() : impl_->processed_start_;
}

Timestamp Command::processed_end() const {
    return guarded() ? EmptyValues::empty_Timestamp() : impl_->processed_end_;
}

void Command::set_processed_start(const Timestamp& time) {
    if (!guarded()) {
        impl_->processed_start_ = time;
    }
}

void Command::set_processed_end(const Timestamp& time) {
    if (!guarded()) {
        impl_->processed_end_ = time;
    }
}

void Command::set_processed_start() {
    if (!guarded()) {
        impl_->processed_start_ = Timestamp::steady_now();
    }
}

void Command::set_processed_end() {
    if (!guarded()) {
        impl_->processed_end_ = Timestamp::steady_now();
    }
}

}  // namespace Quorvane
