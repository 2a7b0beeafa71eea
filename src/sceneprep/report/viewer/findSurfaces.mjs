// Finds the surfaces of a reason in the result.

// A file may have several surfaces of one node as primitives of one mesh, which has the name of the first, or in a child
// of the node. So the node and the material decide, and the mesh only if its name is found.
export function findSurfaces({ material, surfaces: wanted }, model) {
  const ofNode = Map.groupBy(wanted, ({ node }) => node);
  const candidates = model.surfaces.filter(({ materialName, nodeNames }) =>
    materialName === material && nodeNames.some((name) => ofNode.has(name)));
  const isNamed = ({ nodeNames, meshNames }) => nodeNames.some((name) =>
    ofNode.get(name)?.some(({ mesh }) => meshNames.includes(mesh)));
  const named = candidates.filter(isNamed);
  return named.length > 0 ? named : candidates;
}
