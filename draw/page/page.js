// The page of a chain: the matrix of its subchains, the chain in three dimensions, the table of its knots.
"use strict";
(() => {
const data = JSON.parse(document.getElementById("data").textContent);
const GHOST = "#d8dade", INK = "#222222", CLOSURE = "#9aa0a8";
const byId = (id) => document.getElementById(id);
const along = (i) => data.along[Math.round(i / Math.max(1, data.beads.length - 1) * (data.along.length - 1))];

// What is drawn: sticks from point to point, each with two colours, and balls.
function chainParts(first, last) {
  const sticks = [];
  for (let i = 0; i + 1 < data.beads.length; ++i) {
    const lit = i >= first && i + 1 <= last;
    sticks.push({a: data.beads[i], b: data.beads[i + 1], colour: lit ? along(i) : GHOST, width: lit ? 0.7 : 0.35});
  }
  return sticks;
}
function loopParts({first, last, far, kept}) {
  const n = data.beads.length;
  const own = (i) => i < n;
  const at = (i) => own(i) ? data.beads[i] : far[i - n];
  const way = [data.beads[last], ...far, data.beads[first]];
  const sticks = far.length === 0 ? [] : way.slice(1).map((b, i) => ({a: way[i], b, colour: CLOSURE, width: 0.18}));
  const balls = [];
  kept.forEach((bead, i) => {
    sticks.push({a: at(bead), b: at(kept[(i + 1) % kept.length]), colour: INK, width: 0.4});
    if (own(bead)) balls.push({p: at(bead), colour: along(bead), radius: 1.3});
  });
  return {sticks, balls};
}

const centre = [0, 1, 2].map((k) => data.beads.reduce((sum, p) => sum + p[k], 0) / data.beads.length);
const radius = Math.max(4, ...data.beads.map((p) => Math.hypot(...p.map((v, k) => v - centre[k]))));
const canvas = byId("chain");

// With WebGL, by three.js.
function solidView() {
  const renderer = new THREE.WebGLRenderer({canvas, antialias: true, preserveDrawingBuffer: true});
  renderer.setClearColor(0xffffff);
  const scene = new THREE.Scene(), model = new THREE.Group();
  const camera = new THREE.PerspectiveCamera(30, 1, 0.1, 100 * radius);
  scene.add(model, new THREE.AmbientLight(0xffffff, 0.65));
  const lamp = new THREE.DirectionalLight(0xffffff, 0.5);
  lamp.position.set(1, 2, 3);
  scene.add(lamp);
  const rod = new THREE.CylinderBufferGeometry(1, 1, 1, 10), ball = new THREE.SphereBufferGeometry(1, 18, 12);
  const materials = {};
  const material = (colour) =>
    materials[colour] || (materials[colour] = new THREE.MeshLambertMaterial({color: colour}));
  const vector = (p) => new THREE.Vector3(...p.map((v, k) => v - centre[k]));
  const up = new THREE.Vector3(0, 1, 0);
  return {
    show({sticks, balls}) {
      model.remove(...model.children);
      for (const s of sticks) {
        const a = vector(s.a), b = vector(s.b), way = b.clone().sub(a);
        const mesh = new THREE.Mesh(rod, material(s.colour));
        mesh.position.copy(a).add(b).multiplyScalar(0.5);
        mesh.scale.set(s.width, way.length(), s.width);
        mesh.quaternion.setFromUnitVectors(up, way.normalize());
        model.add(mesh);
        const joint = new THREE.Mesh(ball, material(s.colour));
        joint.position.copy(b);
        joint.scale.setScalar(s.width);
        model.add(joint);
      }
      for (const one of balls) {
        const mesh = new THREE.Mesh(ball, material(one.colour));
        mesh.position.copy(vector(one.p));
        mesh.scale.setScalar(one.radius);
        model.add(mesh);
      }
    },
    draw(turn, zoom, width, height) {
      renderer.setSize(width, height, false);
      camera.aspect = width / height;
      camera.position.set(0, 0, 3.6 * radius / zoom);
      camera.updateProjectionMatrix();
      model.setRotationFromMatrix(new THREE.Matrix4().set(
        ...turn[0], 0, ...turn[1], 0, ...turn[2], 0, 0, 0, 0, 1));
      renderer.render(scene, camera);
    },
  };
}

// Without it, flat: what is farther is drawn first.
function flatView() {
  const pen = canvas.getContext("2d");
  let parts = {sticks: [], balls: []};
  return {
    show(what) { parts = what; },
    draw(turn, zoom, width, height) {
      canvas.width = width;
      canvas.height = height;
      const scale = 0.42 * zoom * Math.min(width, height) / radius;
      const seen = (p) => {
        const q = p.map((v, k) => v - centre[k]);
        const [x, y, z] = turn.map((row) => row[0] * q[0] + row[1] * q[1] + row[2] * q[2]);
        return [width / 2 + scale * x, height / 2 - scale * y, z];
      };
      const strokes = parts.sticks.map((s) => {
        const a = seen(s.a), b = seen(s.b);
        return {z: (a[2] + b[2]) / 2, draw() {
          for (const [colour, extra] of [["#ffffff", 3], [s.colour, 0]]) {
            pen.strokeStyle = colour;
            pen.lineWidth = Math.max(1, 2 * s.width * scale) + extra;
            pen.beginPath();
            pen.moveTo(a[0], a[1]);
            pen.lineTo(b[0], b[1]);
            pen.stroke();
          }
        }};
      });
      const discs = parts.balls.map((one) => {
        const c = seen(one.p);
        return {z: c[2], draw() {
          pen.fillStyle = one.colour;
          pen.beginPath();
          pen.arc(c[0], c[1], Math.max(3, one.radius * scale), 0, 7);
          pen.fill();
        }};
      });
      pen.fillStyle = "#ffffff";
      pen.fillRect(0, 0, width, height);
      pen.lineCap = "round";
      [...strokes, ...discs].sort((a, b) => a.z - b.z).forEach((part) => part.draw());
    },
  };
}

function makeView() {
  try {
    return solidView();
  } catch (error) { // the canvas may be tied to WebGL already
    canvas.dataset.flat = "yes";
    return flatView();
  }
}
const view = makeView();
let turn = [[1, 0, 0], [0, 1, 0], [0, 0, 1]], zoom = 1;
function draw() {
  const width = canvas.clientWidth, height = Math.round(width);
  canvas.style.height = `${height}px`;
  view.draw(turn, zoom, width, height);
}
function rotate(dx, dy) {
  const [cx, sx, cy, sy] = [Math.cos(dy), Math.sin(dy), Math.cos(dx), Math.sin(dx)];
  const by = [[cy, 0, sy], [sx * sy, cx, -sx * cy], [-cx * sy, sx, cx * cy]];
  turn = by.map((row) => [0, 1, 2].map((j) => row.reduce((sum, v, k) => sum + v * turn[k][j], 0)));
  draw();
}
canvas.addEventListener("pointerdown", (event) => canvas.setPointerCapture(event.pointerId));
canvas.addEventListener("pointermove", (event) => {
  if (event.buttons) rotate(event.movementX * 0.01, event.movementY * 0.01);
});
canvas.addEventListener("wheel", (event) => {
  event.preventDefault();
  zoom = Math.min(20, Math.max(0.1, zoom * Math.exp(-0.0015 * event.deltaY)));
  draw();
}, {passive: false});

const name = (i) => data.labels[i];
let selected = null;
function select(closure) {
  selected = closure;
  const beads = closure.kept.length;
  byId("info").textContent = `Residues ${name(closure.first)} to ${name(closure.last)}: ${closure.words}`;
  byId("loop").textContent = `${closure.closure} is ${closure.knot}; it is reduced to ${beads} beads: ` +
    closure.kept.map((i) => i < data.beads.length ? name(i) : `+${i - data.beads.length + 1}`).join(" ");
  const loop = loopParts(closure);
  view.show({sticks: [...chainParts(closure.first, closure.last), ...loop.sticks], balls: loop.balls});
  draw();
  if (data.plot) markSelected();
}

// The picture of the matrix: the first residue across, the last one upwards.
const matrix = document.querySelector("#subchains svg");
const mark = document.createElementNS("http://www.w3.org/2000/svg", "circle");
const place = ({first, last}) => [first, last].map((bead) => (bead + 0.5) / data.beads.length * data.plot.side);
function markSelected() {
  const [across, up] = place(selected);
  mark.setAttribute("cx", data.plot.left + across);
  mark.setAttribute("cy", data.plot.bottom - up);
}
function clickMatrix(event) {
  const at = new DOMPoint(event.clientX, event.clientY).matrixTransform(matrix.getScreenCTM().inverse());
  const away = (closure) => {
    const [across, up] = place(closure);
    return (data.plot.left + across - at.x) ** 2 + (data.plot.bottom - up - at.y) ** 2;
  };
  select(data.closures.reduce((best, closure) => away(closure) < away(best) ? closure : best));
}

byId("title").textContent = data.title;
byId("about").textContent = data.about;
const table = byId("knots");
for (const cells of [data.columns, ...data.rows.map((row) => row.cells)]) {
  const row = table.insertRow(), index = table.rows.length - 2;
  cells.forEach((text, i) => {
    const cell = document.createElement(index < 0 ? "th" : "td");
    if (i === 0 && index >= 0) {
      const chip = document.createElement("span");
      chip.className = "chip";
      chip.style.background = data.rows[index].colour;
      cell.append(chip);
    }
    cell.append(text);
    row.append(cell);
  });
  const shown = index < 0 ? null : data.rows[index].shown;
  if (shown !== null) {
    row.dataset.row = index;
    row.addEventListener("click", () => select(data.closures[shown]));
  }
}
if (data.plot) {
  const ring = {r: 10, fill: "none", stroke: INK, "stroke-width": 3};
  for (const [key, value] of Object.entries(ring)) mark.setAttribute(key, value);
  matrix.append(mark);
  matrix.addEventListener("click", clickMatrix);
} else byId("subchains").remove();
// At first the closure leaves upwards, in the plane of the picture.
function turnUp(d) {
  const flat = Math.hypot(d[0], d[1]);
  const across = flat < 1e-6 ? [1, 0, 0] : [d[1] / flat, -d[0] / flat, 0];
  const out = [0, 1, 2].map((k) => across[(k + 1) % 3] * d[(k + 2) % 3] - across[(k + 2) % 3] * d[(k + 1) % 3]);
  turn = [across, d, out];
}
const known = data.rows.find((row) => row.shown !== null);
const start = data.closures[known ? known.shown : 0];
const wayOut = start.far.length ? start.far[0].map((v, k) => v - data.beads[start.last][k]) : [0, 1, 0];
turnUp(wayOut.map((v) => v / (Math.hypot(...wayOut) || 1)));
select(start);
addEventListener("resize", draw);
document.body.dataset.ready = "yes";
})();
