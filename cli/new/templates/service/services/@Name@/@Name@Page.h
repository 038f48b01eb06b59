// The page of the window "@Name@Window".
#pragma once

#include "@Name@Items.h"
#include "desktop/QtPage.h"

class @Name@Page final : public corvane::desktop::QtPage<@Name@Page, @Name@Item> {
    QWidget* MakeWidget(QWidget* parent) override;
};
