#pragma once

#include "study/StudySchema.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// What the parts of the reader of study files share.
namespace corvanta::studyfile {

using Json = nlohmann::ordered_json;

/// Throws Failure with the place, if there is one, and the words.
[[noreturn]] void RefuseToRead(const std::string& place, const std::string& why);

/// A name from a file as part of a message: no longer than a reader wants to read.
[[nodiscard]] std::string ShortName(const std::string& name);

/// A value of the file that knows where it stands.
class Node {
  public:
    Node(const Json& json, std::string place) : m_json(json), m_place(std::move(place)) {}

    [[noreturn]] void Refuse(const std::string& why) const { RefuseToRead(m_place, why); }

    /// Refuses what is no object, and an object with other members than these.
    void RequireMembers(const auto& known) const {
        RequireObject();
        for (const auto& member : m_json.items()) {
            if (std::ranges::find(known, member.key()) == std::ranges::end(known)) {
                RefuseToRead(Member(m_place, ShortName(member.key())), "there is no such member");
            }
        }
    }
    void RequireMembers(std::initializer_list<std::string_view> known) const {
        RequireMembers(std::vector<std::string_view>(known));
    }
    void RequireObject() const { Require(m_json.is_object(), "must be an object"); }

    [[nodiscard]] std::optional<Node> Find(std::string_view name) const {
        const auto found = m_json.find(std::string(name));
        return found == m_json.end() ? std::nullopt
                                     : std::optional(Node(*found, Member(m_place, name)));
    }
    [[nodiscard]] Node operator[](std::string_view name) const {
        const std::optional<Node> found = Find(name);
        Require(found.has_value(), std::string(name) + " is missing");
        return *found;
    }

    /// The elements of a list; none where the member is missing.
    static std::vector<Node> Elements(const std::optional<Node>& list) {
        std::vector<Node> elements;
        if (list) {
            list->Require(list->m_json.is_array(), "must be a list");
            for (const Json& element : list->m_json) {
                elements.emplace_back(element, Element(list->m_place, elements.size()));
            }
        }
        return elements;
    }

    [[nodiscard]] double Number() const {
        Require(m_json.is_number(), "must be a number");
        return m_json.get<double>();
    }
    /// Three numbers.
    [[nodiscard]] std::array<double, 3> Triple() const {
        Require(m_json.is_array() && m_json.size() == 3, "must be a list of three numbers");
        const std::vector<Node> elements = Elements(*this);
        return {elements[0].Number(), elements[1].Number(), elements[2].Number()};
    }
    template <typename Whole = std::int32_t>
    [[nodiscard]] Whole WholeNumber(std::type_identity_t<Whole> lowest,
                                    std::type_identity_t<Whole> highest) const {
        Require(m_json.is_number_integer(), "must be a whole number");
        const auto within = [&](auto value) {
            return std::cmp_greater_equal(value, lowest) && std::cmp_less_equal(value, highest);
        };
        Require(m_json.is_number_unsigned() ? within(m_json.get<std::uint64_t>())
                                            : within(m_json.get<std::int64_t>()),
                RangeWords(static_cast<std::int64_t>(lowest), static_cast<std::int64_t>(highest)));
        return m_json.get<Whole>();
    }
    [[nodiscard]] bool Flag() const {
        Require(m_json.is_boolean(), "must be true or false");
        return m_json.get<bool>();
    }
    [[nodiscard]] std::string Text() const {
        Require(m_json.is_string(), "must be a text");
        return m_json.get<std::string>();
    }
    template <typename Value, std::size_t Count>
    [[nodiscard]] Value Meaning(const std::array<Word<Value>, Count>& words) const {
        const auto found = std::ranges::find(words, Text(), &Word<Value>::Text);
        if (found == words.end()) {
            std::string offered;
            for (const Word<Value>& word : words) {
                offered += (offered.empty() ? "\"" : " or \"") + std::string(word.Text) + "\"";
            }
            Refuse("must be " + offered);
        }
        return found->Meaning;
    }

    void Require(bool met, const std::string& why) const {
        if (!met) {
            Refuse(why);
        }
    }

    [[nodiscard]] const Json& Value() const { return m_json; }

  private:
    const Json& m_json;
    std::string m_place;
};

/// The number of a channel that makes a curve.
[[nodiscard]] int ReadChannel(const Node& node);

} // namespace corvanta::studyfile
