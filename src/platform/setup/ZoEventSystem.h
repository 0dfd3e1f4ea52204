#pragma once

// The runtime's event system, as far as the editor needs it: whether the event feed
// (publication of activations, deactivations and acknowledgements) is available.
class ZoEventSystem {
public:
    static ZoEventSystem* instance();
    bool IsFeedAvailable() const { return m_feedAvailable; }
    void SetFeedAvailable(bool available) { m_feedAvailable = available; }

private:
    bool m_feedAvailable = true;
};
