#pragma once
// Private to the library: not part of the API.

#include <cstdint>
#include <string>

#include <boost/optional.hpp>

#include "QuorvaneExtApi.h"

namespace Quorvane {

// The record behind Command, and at the same time its host face.
class CommandImpl : public ICommandMapper {
public:
    void set_flags(InternalCommandOption flags) override;
    InternalCommandOption flags() const override;
    void set_last_sent(long last_sent) override;
    long last_sent() const override;
    void set_path(const char* path) override;
    void set_symbol_name(const char* symbol_name) override;
    const char* symbol_name() const override;
    void set_mapping(const char* mapping) override;
    void set_domain(const char* domain) override;
    void set_result(ErrorValue result) override;
    void set_hash(unsigned int hash) override;
    unsigned int hash() const override;
    void unset() override;
    void set_symbol_options(const Value& symbol_options) override;

    // Records whether the command changed: one of the two change bits, the other cleared.
    void mark_changed(bool changed);
    // The optional members, made present (as Null) on first access.
    Value& paging();
    Value& symbol_options();

    bool isset_ = true;
    std::string name_;
    std::string symbol_name_;
    std::string mapping_;
    std::string path_;
    ErrorValue result_ = HMI_E_SUCCESS;
    std::uint32_t extension_result_ = 0;
    CommandOption options_ = COMMAND_OPTION_NONE;
    InternalCommandOption flags_ = INTERNAL_COMMAND_DEFAULT;
    std::uint32_t hash_ = 0;
    long last_sent_ = 0;
    Timestamp processed_start_;
    Timestamp processed_end_;
    std::string domain_;
    std::string customer_data_;
    std::string result_string_;
    Value read_value_;
    Value write_value_;
    // Absent differs from present-but-empty: a host may ask whether the client sent any.
    boost::optional<Value> symbol_options_;
    boost::optional<Value> paging_;
};

}  // namespace Quorvane
