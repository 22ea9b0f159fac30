// A last-in first-out stack of owned payloads, linked from its top element down to a sentinel
// element whose payload is null, so that the top of an empty stack reads as null. The loader's
// argument stack and key-name stack are built on it.
#pragma once

#include <memory>
#include <utility>

// Payload is a std::unique_ptr type. The stack owns every payload on it and frees whatever is
// left when it is destroyed. Push payloads that are not null: a null payload would read as an
// empty top. Push throws std::bad_alloc when memory runs out, leaving the stack unchanged.
template <class Payload>
class ozLinkedStack {
public:
    using Pointer = typename Payload::pointer;

    ozLinkedStack() : m_top(std::make_unique<Element>()) {}
    ozLinkedStack(const ozLinkedStack&) = delete;
    ozLinkedStack& operator=(const ozLinkedStack&) = delete;
    ~ozLinkedStack() { Clear(); }

    bool Empty() const { return m_top->below == nullptr; }

    // The payload on top, still owned by the stack; null when the stack is empty.
    Pointer Top() const { return m_top->payload.get(); }

    // Puts payload on top, in a newly allocated element.
    void Push(Payload payload)
    {
        auto element = std::make_unique<Element>();
        element->payload = std::move(payload);
        element->below = std::move(m_top);
        m_top = std::move(element);
    }

    // Unlinks and frees the top element and hands its payload to the caller; null when empty.
    Payload Pop()
    {
        if (Empty())
            return nullptr;
        Payload payload = std::move(m_top->payload);
        m_top = std::move(m_top->below);
        return payload;
    }

    // Gives the top element payload instead of the one it has (freed), which equals a Pop
    // followed by a Push but allocates nothing; on an empty stack it is a Push.
    void ReplaceTop(Payload payload)
    {
        if (Empty())
            Push(std::move(payload));
        else
            m_top->payload = std::move(payload);
    }

    // Frees every element above the sentinel, one at a time, so that a long stack cannot
    // exhaust the call stack the way a chain of nested destructors would.
    void Clear()
    {
        while (!Empty())
            Pop();
    }

private:
    struct Element {
        Payload payload;
        std::unique_ptr<Element> below;  // null only for the sentinel
    };
    std::unique_ptr<Element> m_top;
};
