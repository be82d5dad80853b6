#include "solver/model_to_base.h"

#include "solver/selection_matrix.h"

namespace ZOR::reg {

void moveModelToBase(const GroupRows& baseStart, PointMatrix& model) {
  const SelectionMatrix measured = selectByLength(baseStart.positions);
  const PointMatrix target = measured.pick(baseStart.positions);
  const PointMatrix source = measured.among(baseStart.rows).pick(model);
  const RigidTransform modelToBase = fitRigidTransform(target, source);

  for (Eigen::Index row = 0; row < model.rows(); ++row) {
    const OdGePoint3d moved = apply(modelToBase, {model(row, 0), model(row, 1), model(row, 2)});
    model.row(row) << moved.x, moved.y, moved.z;
  }
}

}  // namespace ZOR::reg
