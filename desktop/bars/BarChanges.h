// What is laid over the bar's model when it is drawn: the user's own keys and their own toolbars and menus.
#pragma once

#include "corvane/platform/controls/ActiveBar.h"

#include <QKeySequence>
#include <QList>
#include <QString>
#include <vector>

namespace corvane::desktop {

// By itself it changes nothing.
class BarChanges {
public:
    virtual ~BarChanges() = default;

    // The keys of a tool, each of one stroke or of two, one after the other.
    [[nodiscard]] virtual QList<QKeySequence> KeysOf(const Tool& tool) const;
    // Keys that the user gave come before those of definitions, where both are the same.
    [[nodiscard]] virtual bool HasOwnKeys(const Tool& /*tool*/) const { return false; }
    // The instances that are drawn of a menu or a toolbar, in order.
    [[nodiscard]] virtual std::vector<Ref<Tool>> InstancesOf(const Band& band) const { return band.Tools()->All(); }

    // How the keys are shown, empty for none.
    [[nodiscard]] QString KeysText(const Tool& tool) const;

    [[nodiscard]] static const BarChanges& None();
};

} // namespace corvane::desktop
