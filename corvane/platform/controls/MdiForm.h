// The model of a multiple-document main form: it knows its children, which form is active, and controls by name.
#pragma once

#include "corvane/base/KeyedCollection.h"
#include "corvane/platform/controls/Form.h"

#include <list>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace corvane {

enum class Arrangement : Long { Cascade = 0, TileHorizontal = 1, TileVertical = 2, ArrangeIcons = 3 };

class __attribute__((visibility("default"))) MdiForm : public Form {
public:
    MdiForm() = default;
    ~MdiForm() override;

    // The MDI child activated last among those loaded, or nothing: also when a child has been loaded but never shown. A
    // child that is being unloaded is passed over: whoever closes all children must come to an end.
    [[nodiscard]] Ref<Form> ActiveForm() const;
    // The form of any kind that is active, or nothing.
    [[nodiscard]] Ref<Form> ForegroundForm() const;
    // All loaded forms of the application, in order of activation, the latest last.
    [[nodiscard]] std::vector<Ref<Form>> Forms() const;
    void Arrange(Arrangement eHow);
    // While set, ActiveForm is nothing: the child that refused to unload isn't asked again in the same iteration.
    void SetRefusesToTellChild(bool bRefuses) { m_bHidesActive = bRefuses; }

    // A control or other member that is looked up by its name at run time, such as "ActiveBar".
    void AddMember(std::string_view sName, Ref<Object> oMember);
    // Reads a member. 438 when there is none of that name.
    Variant Invoke(std::string_view sName, std::span<const Variant> aArguments) override;

    // For renderers alone.
    Event<Arrangement> Arranged;
    Event<const Ref<Form>&> ChildLoaded;

    // By the forms themselves.
    void FormMade(Form& oForm);
    void FormLoaded(const Ref<Form>& oForm);
    void FormActivated(const Ref<Form>& oForm);
    void FormUnloaded(Form& oForm);
    void Forget(Form& oForm);

private:
    struct Place {
        std::list<Form*>::iterator it;
        bool bWasActive; // since it was loaded
    };

    void TakeOut(Form& oForm);

    std::unordered_set<Form*> m_setMade;          // each takes itself out when it ends
    std::list<Form*> m_aForms;                    // the loaded ones, the one activated last behind
    std::unordered_map<Form*, Place> m_mapPlaces; // in that list
    Form* m_pForeground = nullptr;
    bool m_bHidesActive = false;
    Ref<KeyedCollection<Ref<Object>>> m_colMembers = New<KeyedCollection<Ref<Object>>>();
};

} // namespace corvane
