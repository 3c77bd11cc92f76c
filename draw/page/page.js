// The page of a chain: the matrix of its stretches, the chain in three dimensions, the table of its knots.
"use strict";
(() => {
const data = JSON.parse(document.getElementById("data").textContent);
const GHOST = "#d8dade", INK = "#222222", CLOSURE = "#9aa0a8";
const byId = (id) => document.getElementById(id);
const along = (i) => data.along[Math.round(i / Math.max(1, data.beads.length - 1) * (data.along.length - 1))];
const rgb = (hex) => [1, 3, 5].map((at) => parseInt(hex.slice(at, at + 2), 16) / 255);
const mixed = (from, to, part) =>
  `rgb(${rgb(from).map((v, i) => Math.round(255 * (v + part * (rgb(to)[i] - v)))).join(",")})`;

// What is drawn: sticks from point to point, each with two colours, and balls.
function chainParts(first, last) {
  const sticks = [];
  for (let i = 0; i + 1 < data.beads.length; ++i) {
    const lit = i >= first && i + 1 <= last;
    sticks.push({a: data.beads[i], b: data.beads[i + 1], colour: lit ? along(i) : GHOST, width: lit ? 0.7 : 0.35});
  }
  return sticks;
}
function loopParts(stretch) {
  const {first, last, far, kept} = stretch, n = data.beads.length;
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
  const material = (colour) => materials[colour] || (materials[colour] = new THREE.MeshLambertMaterial({color: colour}));
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
function select(stretch) {
  selected = stretch;
  const beads = stretch.kept.length;
  byId("info").textContent = `Residues ${name(stretch.first)} to ${name(stretch.last)}: ${stretch.words}`;
  byId("loop").textContent = `${stretch.closure} is ${stretch.knot}; it comes down to ${beads} beads: ` +
    stretch.kept.map((i) => i < data.beads.length ? name(i) : `+${i - data.beads.length + 1}`).join(" ");
  const loop = loopParts(stretch);
  view.show({sticks: [...chainParts(stretch.first, stretch.last), ...loop.sticks], balls: loop.balls});
  draw();
  if (data.matrix) drawMatrix();
}

// The matrix: across the first residue, upwards the last one.
const matrix = byId("matrix"), margin = 46, pad = 14;
let side = 0, plot = 0; // of the canvas, and of the square in it
const place = (bead) => margin + (bead + 0.5) / data.beads.length * plot;
function drawMatrix() {
  side = matrix.clientWidth;
  matrix.width = matrix.height = side;
  matrix.style.height = `${side}px`;
  const pen = matrix.getContext("2d"), n = data.beads.length, unit = (side - margin - pad) / n;
  plot = n * unit;
  pen.fillStyle = "#ffffff";
  pen.fillRect(0, 0, side, side);
  pen.fillStyle = data.matrix.colours[0][0];
  pen.beginPath();
  pen.moveTo(margin, side - margin);
  pen.lineTo(margin, pad);
  pen.lineTo(side - pad, pad);
  pen.fill();
  const dot = data.matrix.side;
  data.matrix.rows.forEach((row, j) => {
    let i = 0;
    for (const [knot, shade, run] of row) {
      if (knot > 0) {
        pen.fillStyle = data.matrix.colours[knot][shade];
        pen.fillRect(margin + i * dot * unit, side - margin - (j + 1) * dot * unit, run * dot * unit + 0.5, dot * unit + 0.5);
      }
      i += run;
    }
  });
  pen.fillStyle = "#555555";
  pen.font = "12px Helvetica, Arial, sans-serif";
  const step = [1, 2, 5, 10, 20, 50, 100, 200, 500, 1000, 2000, 5000].find((s) => n / s <= 9) || 10000;
  for (let i = step - 1; i < n; i += step) {
    pen.textAlign = "center";
    pen.fillText(name(i), place(i), side - margin + 18);
    pen.textAlign = "right";
    pen.fillText(name(i), margin - 6, side - place(i) + 4);
  }
  pen.textAlign = "center";
  pen.save();
  pen.translate(12, side - margin - plot / 2);
  pen.rotate(-Math.PI / 2);
  pen.fillText("last residue", 0, 0);
  pen.restore();
  pen.fillText("first residue", margin + plot / 2, side - 8);
  const mark = (stretch, fill) => {
    pen.beginPath();
    pen.arc(place(stretch.first), side - place(stretch.last), 6, 0, 7);
    pen.fillStyle = fill;
    pen.fill();
    pen.lineWidth = 2;
    pen.strokeStyle = INK;
    pen.stroke();
  };
  data.places.forEach((p) => { if (p.stretch) mark(p.stretch, p.colour); });
  if (selected) mark(selected, "rgba(255,255,255,0.75)");
}
function clickMatrix(event) {
  const box = matrix.getBoundingClientRect(), n = data.beads.length;
  const first = (event.clientX - box.left - margin) / plot * n;
  const last = (side - (event.clientY - box.top) - margin) / plot * n;
  const away = (s) => (s.first + 0.5 - first) ** 2 + (s.last + 0.5 - last) ** 2;
  select(data.stretches.reduce((best, s) => away(s) < away(best) ? s : best));
}

byId("title").textContent = data.title;
byId("about").textContent = data.about;
const table = byId("knots");
for (const cells of [data.columns, ...data.places.map((p) => p.cells)]) {
  const row = table.insertRow(), index = table.rows.length - 2;
  cells.forEach((text, i) => {
    const cell = document.createElement(index < 0 ? "th" : "td");
    if (i === 0 && index >= 0) {
      const chip = document.createElement("span");
      chip.className = "chip";
      chip.style.background = data.places[index].colour;
      cell.append(chip);
    }
    cell.append(text);
    row.append(cell);
  });
  if (index >= 0 && data.places[index].stretch) {
    row.dataset.row = index;
    row.addEventListener("click", () => select(data.places[index].stretch));
  }
}
if (data.matrix) matrix.addEventListener("click", clickMatrix);
else byId("stretches").remove();
// At first the closure leaves upwards, in the plane of the picture.
function turnUp(d) {
  const flat = Math.hypot(d[0], d[1]);
  const across = flat < 1e-6 ? [1, 0, 0] : [d[1] / flat, -d[0] / flat, 0];
  const out = [0, 1, 2].map((k) => across[(k + 1) % 3] * d[(k + 2) % 3] - across[(k + 2) % 3] * d[(k + 1) % 3]);
  turn = [across, d, out];
}
const known = data.places.find((p) => p.stretch);
const start = known ? known.stretch : data.stretches[0];
const wayOut = start.far.length ? start.far[0].map((v, k) => v - data.beads[start.last][k]) : [0, 1, 0];
turnUp(wayOut.map((v) => v / (Math.hypot(...wayOut) || 1)));
select(start);
addEventListener("resize", () => select(selected));
document.body.dataset.ready = "yes";
})();
