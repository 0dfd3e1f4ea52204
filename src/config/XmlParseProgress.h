#pragma once
#include <cstddef>
#include <functional>

// While one lives, every XmlDocument::Parse on this thread tells `consumed` now and then
// how far the text has been read: the bytes before that offset are never looked at again,
// so that the reader of a large file may hand their memory back as the parse goes on.
class XmlParseProgress {
public:
    using Consumed = std::function<void(std::size_t offset)>;

    explicit XmlParseProgress(Consumed consumed);
    ~XmlParseProgress();
    XmlParseProgress(XmlParseProgress const&) = delete;
    XmlParseProgress& operator=(XmlParseProgress const&) = delete;

    // The innermost one of this thread, or null.
    static XmlParseProgress const* Current();
    void Tell(std::size_t offset) const { m_consumed(offset); }

private:
    Consumed m_consumed;
    XmlParseProgress const* m_outer;
};
