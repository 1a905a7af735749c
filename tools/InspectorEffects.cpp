// SPDX-License-Identifier: Zlib
#include "game/CloudField.h"
#include "tools/Inspector.h"

Inspector::Cloud Inspector::cloud(const CloudField& field, int index) {
    const CloudField::Cloud& cloud = field.clouds[static_cast<std::size_t>(index)];
    return {cloud.x, cloud.y, cloud.driftingRight};
}

void Inspector::setCloud(CloudField& field, int index, const Cloud& cloud) {
    field.clouds[static_cast<std::size_t>(index)] = {cloud.x, cloud.y, cloud.driftingRight};
}
