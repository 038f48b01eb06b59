// A service whose pages are forms.
#include "corvane/Page.h"
#include "corvane/Service.h"

using namespace corvane;

namespace {

struct Bird {
    std::string name, ring;
    Long wing = 50, sex = 0;
    bool seen = false;
};

Bird s_bird{"Wren", "AB123"};

// The whole of a page of five fields; what is required, and in which range, is in its form.
class DetailsPage final : public Page<DetailsPage> {
    std::string m_name, m_ring;
    Long m_wing = 0, m_sex = 0;
    bool m_seen = false;
    void OnInitialize() override {
        std::tie(m_name, m_ring, m_wing, m_sex, m_seen) =
            std::tie(s_bird.name, s_bird.ring, s_bird.wing, s_bird.sex, s_bird.seen);
    }
    void OnSave() override { s_bird = {m_name, m_ring, m_wing, m_sex, m_seen}; }
    void Clear() { m_ring.clear(); }
    [[nodiscard]] std::string RingProblem() const { return m_ring == "AB999" ? "This ring is another bird's." : ""; }

public:
    static constexpr auto Members =
        Fields<&DetailsPage::m_name, &DetailsPage::m_ring, &DetailsPage::m_wing, &DetailsPage::m_sex,
               &DetailsPage::m_seen, &DetailsPage::Clear>(Property("RingProblem", &DetailsPage::RingProblem));
};

class BirdsService final : public Service<BirdsService> {
    Long m_heard = 0;
    void OnPreferenceChanged(const std::string& service, const std::string& category, const std::string& name) {
        ++m_heard;
        Preferences store;
        store.Initialize(service, category);
        SetStatus(name + " is " + store.GetValue(name, ""));
    }

public:
    void Start() {}
    [[nodiscard]] std::string Bird() const {
        return s_bird.name + " " + s_bird.ring + " " + std::to_string(s_bird.sex);
    }
    [[nodiscard]] Long Heard() const { return m_heard; } // of preferences
    static constexpr auto Members = Methods<&BirdsService::Start, &BirdsService::OnPreferenceChanged>(
        Property("Bird", &BirdsService::Bird), Property("Heard", &BirdsService::Heard));
};

class OtherService final : public Service<OtherService> {
    Long m_heard = 0;
    void OnPreferenceChanged(const std::string&, const std::string&, const std::string&) { ++m_heard; }

public:
    [[nodiscard]] Long Heard() const { return m_heard; }
    static constexpr auto Members =
        Methods<&OtherService::OnPreferenceChanged>(Property("Heard", &OtherService::Heard));
};

} // namespace

CORVANE_PLUGIN(Class<BirdsService>("BirdsSvc.BirdsService"), Class<OtherService>("BirdsSvc.OtherService"),
               Class<DetailsPage>("BirdsSvc.DetailsPage"))
