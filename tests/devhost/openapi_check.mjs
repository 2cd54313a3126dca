// Starts tav-host on a free port, validates its OpenAPI document with a real validator and checks that
// it tells every route, type and event of the plug-in's API table.
// node openapi_check.mjs TAV_HOST NPM_FOLDER; exit 77 when the validator is not installed.
import assert from 'node:assert/strict';
import {spawn} from 'node:child_process';
import {existsSync} from 'node:fs';
import {createRequire} from 'node:module';
import path from 'node:path';

const [tavHost, npmFolder] = process.argv.slice(2);
if (!existsSync(path.join(npmFolder, 'node_modules', '@apidevtools', 'swagger-parser'))) {
  console.log(`Skipped: no OpenAPI validator in ${npmFolder}; make deps installs it`);
  process.exit(77);
}
const SwaggerParser = createRequire(path.join(npmFolder, 'package.json'))('@apidevtools/swagger-parser');

const host = spawn(tavHost, ['--port', '0', '--quiet'], {stdio: ['ignore', 'pipe', 'inherit']});
const base = await new Promise((resolve, reject) => {
  let text = '';
  host.stdout.on('data', (chunk) => {
    text += chunk;
    const found = /Listening on (\S+)/.exec(text);
    if (found) resolve(found[1]);
  });
  host.on('exit', (code) => reject(new Error(`tav-host ended with ${code}: ${text}`)));
});
host.stdout.resume();

let failed = 0;
const checks = [];
const check = (name, run) => checks.push([name, run]);
const get = async (route) => (await fetch(base + route)).json();
const document = await get('/devhost/openapi.json');
const table = await get('/devhost/api');

check('the document validates', async () => {
  await SwaggerParser.validate(structuredClone(document));
});
check('the validator refuses an answer without its description', async () => {
  const broken = structuredClone(document);
  delete broken.paths['/tav-leagues/v1/teams/{id}'].get.responses['200'].description;
  await assert.rejects(SwaggerParser.validate(broken),
                       /teams~1\{id\}\/get\/responses\/200 must have required property 'description'/);
});
check('every route of the API table is an operation', () => {
  assert.equal(table.routes.length, 8);
  for (const route of table.routes) {
    const operation = document.paths[route.path]?.[route.method.toLowerCase()];
    assert.ok(operation, `${route.method} ${route.path} is missing`);
    assert.equal(operation.operationId, route.function);
    const inDocument = (operation.parameters || []).map((p) => `${p.in}:${p.name}`).sort();
    assert.deepEqual(inDocument, route.arguments.map((a) => `${a.location}:${a.name}`).sort());
  }
});
check('every type is a schema and every event a webhook', () => {
  for (const type of table.types) {
    assert.ok(document.components.schemas[type.name], type.name);
  }
  assert.deepEqual(Object.keys(document.webhooks).sort(), table.events.map((e) => e.name).sort());
});
check('arguments, results and enumerations keep their types', () => {
  const tiers = document.paths['/tav-leagues/v2/tiers'].get;
  assert.deepEqual(tiers.parameters[1].content['application/json'].schema,
                   {type: 'array', items: {$ref: '#/components/schemas/TavLeaguesLeagueQueueType'}});
  assert.deepEqual(document.components.schemas.TavLeaguesLeagueQueueType.enum,
                   table.types.find((t) => t.name === 'TavLeaguesLeagueQueueType').enumerators.map((v) => v.name));
  assert.deepEqual(document.paths['/tav-leagues/v1/summoner-leagues/{summonerId}'].get.responses['200'].content,
                   {'application/json': {schema: {type: 'array', items: {$ref: '#/components/schemas/TavLeaguesLeague'}}}});
});
check("tav-host's own routes are there", () => {
  for (const [method, route] of [['get', '/devhost/state'], ['delete', '/devhost/journal'],
                                 ['put', '/devhost/faults/{destination}/{method}'], ['get', '/devhost/openapi.json']]) {
    assert.deepEqual(document.paths[route][method].tags, ['tav-host'], `${method} ${route}`);
  }
});

for (const [name, run] of checks) {
  try {
    await run();
    console.log(`ok - ${name}`);
  } catch (error) {
    failed += 1;
    console.log(`not ok - ${name}\n${error.stack || error}`);
  }
}
host.kill('SIGINT');
console.log(`${checks.length - failed} passed, ${failed} failed`);
process.exit(failed ? 1 : 0);
