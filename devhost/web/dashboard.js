// The league dashboard of tav-host: the plug-in's state, kept live from /devhost/events, and the
// controls of the simulated platform, game server and clock.
'use strict';

const QUEUES = [['RANKED_SOLO_5x5', 'SOLO5V5', 'Solo/Duo'], ['RANKED_FLEX_SR', 'FLEXSR', 'Flex 5v5'],
                ['RANKED_FLEX_TT', 'FLEXTT', 'Flex 3v3']];
const PHASES = ['None', 'Lobby', 'Matchmaking', 'CheckedIntoTournament', 'ReadyCheck', 'ChampSelect', 'GameStart',
                'FailedToLaunch', 'InProgress', 'Reconnect', 'WaitingForStats', 'PreEndOfGame', 'EndOfGame',
                'TerminatedInError'];
const REASONS = ['LEAGUE_PROMOTED', 'LEAGUE_DEMOTED', 'LEAGUE_POINTS_UPDATE', 'LEAGUE_UPDATE_DECAY',
                 'MINISERIES_START', 'MINISERIES_LOST', 'MINISERIES_CANCEL', 'QUEUE_DODGE', 'NOT_YET_SEEDED'];
const SERVER_CALLS = ['leagues.getAllMyLeagues', 'leagues.getAllLeaguesForPlayer', 'leagues.getChallengerLeague',
                      'leagues.getMasterLeagueTopX', 'leagues.getTiersForParticipants',
                      'leagues.getMyLeaguePositions', 'leagues.getMySignedLeaguePositions',
                      'summonerTeamService.findTeamById', 'playerStatsService.getTeamAggregatedStats',
                      'playerStatsService.getAggregatedStats', 'clientFacadeService.callPersistenceMessaging',
                      'teambuilder-draft.setJwtAsGameCustomizationV1'];
// The events of the plug-in's API table; /devhost/events names each one.
const EVENT_NAMES = ['OnJsonApiEvent', 'OnCallback', 'OnLcdsEvent', 'OnServiceProxyAsyncEvent',
                     'OnServiceProxyMethodEvent', 'OnServiceProxyUuidEvent'];
const KEPT_EVENTS = 60;
const KEPT_JOURNAL = 200;

const token = new URLSearchParams(location.search).get('token');
const $ = (id) => document.getElementById(id);

const view = {player: null, standings: null, standingsError: '', signed: null, signedError: '',
              ladders: null, laddersError: '', notifications: [], notificationsError: '', journalSince: 0};

function withToken(path) {
  return token ? path + (path.includes('?') ? '&' : '?') + 'token=' + encodeURIComponent(token) : path;
}

// Calls tav-host; a failure throws its message.
async function call(method, path, body) {
  const init = {method, headers: {}};
  if (body !== undefined) {
    init.body = JSON.stringify(body);
    init.headers['Content-Type'] = 'application/json';
  }
  const response = await fetch(withToken(path), init);
  const text = await response.text();
  let value = null;
  try {
    value = text ? JSON.parse(text) : null;
  } catch {
    value = text;
  }
  if (!response.ok) {
    throw new Error(value && value.message ? value.message : `${method} ${path} answered ${response.status}`);
  }
  return value;
}

function el(tag, attributes, ...children) {
  const node = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes || {})) {
    if (value === false || value === null || value === undefined) continue;
    if (name === 'class') node.className = value;
    else if (name.startsWith('on')) node.addEventListener(name.slice(2), value);
    else node.setAttribute(name, value === true ? '' : value);
  }
  for (const child of children.flat()) {
    if (child !== null && child !== undefined && child !== false) {
      node.append(child instanceof Node ? child : String(child));
    }
  }
  return node;
}

function fill(id, ...children) {
  $(id).replaceChildren(...children.flat());
}

function say(text, failed) {
  const status = $('status');
  status.textContent = text;
  status.className = failed ? 'failure' : '';
}

function queueLabel(name) {
  const queue = QUEUES.find((q) => q[0] === name || q[1] === name);
  return queue ? queue[2] : name;
}

function duration(ms) {
  const seconds = Math.max(0, Math.round(ms / 1000));
  const [days, hours, minutes] = [Math.floor(seconds / 86400), Math.floor((seconds % 86400) / 3600),
                                  Math.floor((seconds % 3600) / 60)];
  const pad = (n) => String(n).padStart(2, '0');
  if (days) return `${days} d ${hours} h`;
  return hours ? `${hours}:${pad(minutes)}:${pad(seconds % 60)}` : `${minutes}:${pad(seconds % 60)}`;
}

function words(key) {
  return key.replace(/^LEAGUES_(MESSAGE|SYSTEM|GENERAL)_/, '').replace(/_TITLE$/, '').toLowerCase()
    .replace(/_/g, ' ');
}

// ---- Standings --------------------------------------------------------------------------------------------

function pips(results) {
  if (!results || !results.length) return null;
  return el('span', {class: 'pips', 'aria-label': 'series ' + results.join(' ')},
            results.map((r) => el('span', {class: 'pip ' + r.toLowerCase()}, r)));
}

function signedOf(queueType) {
  const queue = QUEUES.find((q) => q[1] === queueType);
  const items = view.signed ? view.signed.summonerLeagues || [] : [];
  return items.find((item) => queue && item.queueType === queue[0]);
}

function warnings(standing, signed) {
  const list = [];
  if (signed && signed.displayDecayWarning) list.push('decay warning');
  if (signed && signed.demotionWarning) list.push(`demotion shield ${signed.demotionWarning}`);
  if (standing.inactivityStatus) {
    list.push(`inactivity ${standing.inactivityStatus.toLowerCase()}` +
              (signed && signed.timeUntilInactivityStatusChanges
                 ? `, changes in ${duration(signed.timeUntilInactivityStatusChanges)}` : ''));
  }
  if (standing.apexDaysUntilDecay) list.push(`decays in ${standing.apexDaysUntilDecay} d`);
  if (standing.inactive) list.push('inactive');
  return list;
}

function standingCard(league) {
  const id = view.player ? String(view.player.summonerId) : '';
  let mine = null;
  for (const division of league.leagues || []) {
    const found = (division.standings || []).find((s) => s.id === id);
    if (found) mine = {division: division.leagueRank, standing: found};
  }
  const attributes = {class: 'standing tier-' + league.leagueTier.toLowerCase(), 'data-queue': league.queueType};
  const heading = el('h3', null, queueLabel(league.queueType), el('span', {class: 'muted'}, ' ' + league.leagueName));
  if (!mine) return el('article', attributes, heading, el('p', {class: 'muted'}, 'not placed'));
  const s = mine.standing;
  const games = s.wins + s.losses;
  const alerts = warnings(s, signedOf(league.queueType));
  return el('article', attributes, heading,
    el('p', {class: 'tier'}, el('strong', null, `${league.leagueTier} ${mine.division}`), ` ${s.points} LP`),
    pips(s.miniseriesResults),
    el('p', null, `${s.wins} W – ${s.losses} L`,
       el('span', {class: 'muted'}, games ? ` (${Math.round((100 * s.wins) / games)} %)` : ''),
       s.position ? el('span', {class: 'muted'}, ` · #${s.position} of the division`) : null),
    s.emblems.length ? el('p', {class: 'emblems'}, s.emblems.map((e) => el('span', {class: 'chip'}, e.toLowerCase())))
                     : null,
    alerts.length ? el('ul', {class: 'warnings'}, alerts.map((w) => el('li', null, w))) : null);
}

function renderStandings() {
  if (view.standingsError) {
    fill('standings', el('p', {class: 'failure', role: 'alert'}, view.standingsError));
  } else if (!view.standings) {
    fill('standings', el('p', {class: 'muted'}, 'Loading…'));
  } else if (!view.standings.length) {
    fill('standings', el('p', {class: 'muted'}, 'No standings'));
  } else {
    fill('standings', view.standings.map(standingCard));
  }
}

async function loadStandings() {
  if (!view.player) return;
  try {
    view.standings = await call('GET', `/tav-leagues/v1/summoner-leagues/${view.player.summonerId}`);
    view.standingsError = '';
  } catch (error) {
    view.standingsError = error.message;
  }
  renderStandings();
}

// ---- Signed standings --------------------------------------------------------------------------------------

function expiryOf(jwt) {
  try {
    const claims = jwt.split('.')[1].replace(/-/g, '+').replace(/_/g, '/');
    return JSON.parse(atob(claims)).exp || 0;
  } catch {
    return 0;
  }
}

function renderSigned() {
  if (view.signedError) {
    fill('signed', el('li', {class: 'failure'}, view.signedError));
  } else {
    const items = view.signed ? view.signed.summonerLeagues || [] : [];
    fill('signed', items.map((item) => el('li', null, `${queueLabel(item.queueType)}: ${item.tier} ${item.rank}`,
                                          el('span', {class: 'muted'}, ` token ${item.jwt ? 'held' : 'missing'}`))));
  }
  tick();
}

function tick() {
  const expiries = (view.signed && !view.signedError ? view.signed.summonerLeagues || [] : [])
    .map((item) => expiryOf(item.jwt)).filter((exp) => exp > 0);
  const node = $('signed-expiry');
  if (!expiries.length) {
    node.textContent = view.signedError ? '' : 'no token';
    node.className = 'countdown muted';
    return;
  }
  const left = Math.min(...expiries) * 1000 - Date.now();
  node.textContent = left > 0 ? `expires in ${duration(left)}` : `expired ${duration(-left)} ago`;
  node.className = 'countdown' + (left < 60000 ? ' soon' : '');
}

async function loadSigned() {
  try {
    view.signed = await call('GET', '/tav-leagues/v2/summoner-leagues/current-summoner/signed-leagues');
    view.signedError = '';
  } catch (error) {
    view.signedError = error.message;
  }
  renderSigned();
}

// ---- Ladders -----------------------------------------------------------------------------------------------

function ladderTable(leagues) {
  const queue = $('ladder-queue').value;
  const league = (leagues || []).find((l) => l.queueType === queue && (l.leagues || []).length);
  if (!league) return el('p', {class: 'muted'}, 'nobody');
  const rows = league.leagues[0].standings.map((s) => {
    const delta = s.positionDelta > 0 ? `▲${s.positionDelta}` : s.positionDelta < 0 ? `▼${-s.positionDelta}` : '–';
    return el('tr', null, el('td', null, s.position),
              el('td', {class: s.positionDelta > 0 ? 'up' : s.positionDelta < 0 ? 'down' : 'muted'}, delta),
              el('td', null, s.name), el('td', {class: 'num'}, s.points),
              el('td', {class: 'num'}, `${s.wins}/${s.losses}`));
  });
  return el('table', null,
            el('caption', {class: 'muted'}, `${league.leagueName}, next update in ` +
                                             duration(league.challengerNextPromotionUpdateInMs)),
            el('thead', null, el('tr', null, ['#', 'move', 'player', 'LP', 'W/L'].map((h) => el('th', {scope: 'col'}, h)))),
            el('tbody', null, rows));
}

function renderLadders() {
  if (view.laddersError) {
    fill('ladder-challengers', el('p', {class: 'failure'}, view.laddersError));
    fill('ladder-masters');
    return;
  }
  fill('ladder-challengers', ladderTable(view.ladders && view.ladders.challengers));
  fill('ladder-masters', ladderTable(view.ladders && view.ladders.masters));
}

async function loadLadders() {
  try {
    view.ladders = await call('GET', '/tav-leagues/v1/challenger-leagues');
    view.laddersError = '';
  } catch (error) {
    view.laddersError = error.message;
  }
  renderLadders();
}

// ---- Notifications -----------------------------------------------------------------------------------------

function renderNotifications() {
  if (view.notificationsError) {
    fill('notifications', el('li', {class: 'failure'}, view.notificationsError));
    return;
  }
  const open = view.notifications.filter((n) => !n.acknowledgedByPlayer).length;
  $('notification-count').textContent = `${open} open of ${view.notifications.length}`;
  fill('notifications', view.notifications.map((n) => {
    const data = n.data || {};
    const where = [queueLabel(data.queueType || ''), data.tier, data.rank].filter(Boolean).join(' ');
    return el('li', {class: 'notification' + (n.acknowledgedByPlayer ? ' seen' : ''), 'data-id': n.id,
                     'data-type': n.type},
              el('div', null, el('strong', null, words(n.titleType)), ' ',
                 el('span', {class: 'chip ' + n.severity.toLowerCase()}, n.severity.toLowerCase())),
              el('div', null, words(n.type), where ? el('span', {class: 'muted'}, ` · ${where}`) : null,
                 data.leaguePointsDelta ? el('span', {class: 'muted'}, ` · ${data.leaguePointsDelta} LP`) : null),
              el('div', {class: 'muted small'}, `#${n.id} · priority ${n.priority}`),
              n.acknowledgedByPlayer ? el('span', {class: 'acked muted small'}, 'acknowledged')
                : el('button', {type: 'button', class: 'ack', onclick: () => acknowledge(n.id)}, 'Acknowledge'));
  }));
}

async function loadNotifications() {
  try {
    view.notifications = await call('GET', '/tav-leagues/v2/notifications');
    view.notificationsError = '';
  } catch (error) {
    view.notificationsError = error.message;
  }
  renderNotifications();
}

async function acknowledge(id) {
  await act(`Acknowledged #${id}`, () => call('POST', `/tav-leagues/v2/notifications/${id}/acknowledge`));
  await loadNotifications();
}

// ---- Host state ---------------------------------------------------------------------------------------------

function renderState(state) {
  view.player = state.player;
  fill('who', el('strong', null, state.player.name), ` (summoner ${state.player.summonerId}) `,
       el('span', {class: 'badge ' + (state.loggedIn ? 'on' : 'off')}, state.loggedIn ? 'logged in' : 'logged out'));
  if (!$('gameflow-phase').matches(':focus')) $('gameflow-phase').value = state.gameflow.phase;
  if (state.gameflow.queue && !$('gameflow-queue').matches(':focus')) $('gameflow-queue').value = state.gameflow.queue;
  $('gameflow-now').textContent = `now ${state.gameflow.phase}` + (state.gameflow.queue ? `, ${state.gameflow.queue}` : '');
  for (const name of ['leagueServiceEnabled', 'JWTEnabled']) $('switch-' + name).checked = !!state.switches[name];
  $('clock').textContent = `tav-host clock at ${duration(state.clock * 1000)}`;
  fill('faults', state.faults.map((f) => el('li', null, el('code', null, `${f.destination}.${f.method}`),
                                          ` ${f.error || 'answers'}` + (f.delaySeconds ? ` after ${f.delaySeconds} s` : ''))));
}

async function loadState() {
  renderState(await call('GET', '/devhost/state'));
}

// ---- Events and journal ---------------------------------------------------------------------------------------

function time(date) {
  return date.toISOString().slice(11, 23);
}

function onEvent(name, message) {
  let payload = {};
  try {
    payload = JSON.parse(message.data);
  } catch {
    payload = {};
  }
  const uri = payload.uri || '';
  $('events').prepend(el('li', null, el('time', null, time(new Date())), ' ', el('strong', null, name), ' ',
                         payload.eventType || '', ' ', el('code', null, uri),
                         el('span', {class: 'muted'}, ` ${message.data.length} bytes`)));
  while ($('events').children.length > KEPT_EVENTS) $('events').lastChild.remove();
  if (uri === '/tav-leagues/v2/notifications' && Array.isArray(payload.data)) {
    view.notifications = payload.data;
    view.notificationsError = '';
    renderNotifications();
  } else if (uri.startsWith('/tav-leagues/v1/summoner-leagues/') && view.player &&
             uri.endsWith('/' + view.player.summonerId) && Array.isArray(payload.data)) {
    view.standings = payload.data;
    view.standingsError = '';
    renderStandings();
  } else if (uri === '/tav-leagues/v2/summoner-leagues/current-summoner/signed-leagues') {
    view.signed = payload.data;
    view.signedError = '';
    renderSigned();
    renderStandings();
  }
  scheduleJournal();
}

function connectEvents() {
  const source = new EventSource(withToken('/devhost/events'));
  source.onopen = () => {
    $('live').textContent = 'live';
    $('live').className = 'badge on';
  };
  source.onerror = () => {
    $('live').textContent = 'reconnecting';
    $('live').className = 'badge off';
  };
  for (const name of EVENT_NAMES) source.addEventListener(name, (message) => onEvent(name, message));
}

let journalTimer = 0;
function scheduleJournal() {
  clearTimeout(journalTimer);
  journalTimer = setTimeout(loadJournal, 250);
}

async function loadJournal() {
  const kind = $('journal-kind').value;
  const query = `?limit=${KEPT_JOURNAL}&since=${view.journalSince}` + (kind ? `&kind=${kind}` : '');
  let entries;
  try {
    entries = await call('GET', '/devhost/journal' + query);
  } catch (error) {
    say(error.message, true);
    return;
  }
  const list = $('journal');
  for (const entry of entries) {
    list.append(el('li', {class: 'kind-' + entry.kind, title: entry.detail}, el('time', null, entry.time.slice(11, 23)),
                   ' ', el('span', {class: 'chip'}, entry.kind), ' ', entry.summary));
    view.journalSince = Math.max(view.journalSince, entry.id);
  }
  while (list.children.length > KEPT_JOURNAL) list.firstChild.remove();
  if (entries.length) list.scrollTop = list.scrollHeight;
}

function restartJournal() {
  view.journalSince = 0;
  fill('journal');
  loadJournal();
}

// ---- Controls --------------------------------------------------------------------------------------------------

// Runs one control, then reads back what it changed.
async function act(done, change) {
  try {
    await change();
    say(done);
  } catch (error) {
    say(error.message, true);
  }
  await loadState().catch((error) => say(error.message, true));
  scheduleJournal();
}

function options(id, list) {
  fill(id, list.map(([value, label]) => el('option', {value}, label || value)));
}

function pushMessage() {
  const reason = $('push-reason').value;
  const queue = $('push-queue').value;
  const signed = view.signed && (view.signed.summonerLeagues || []).find((item) => item.queueType === queue);
  const leagueItem = {queueType: queue, tier: signed ? signed.tier : 'GOLD', rank: signed ? signed.rank : 'I',
                      leaguePoints: signed ? signed.leaguePoints : 0, wins: signed ? signed.wins : 0,
                      losses: signed ? signed.losses : 0, playerOrTeamId: String(view.player.summonerId),
                      playerOrTeamName: view.player.name};
  const param = {notifyReason: reason, gameId: Date.now() % 1e7, leagueItem};
  if (reason === 'LEAGUE_POINTS_UPDATE') param.leaguePointsDelta = 19;
  const body = {accountId: view.player.accountId, msgId: String(Date.now()), type: 'leagues', params: [param]};
  return act(`Pushed ${reason}`, () => call('POST', '/devhost/messages', {body}));
}

function wire() {
  options('gameflow-phase', PHASES.map((p) => [p]));
  document.querySelectorAll('select.queues').forEach((s) => options(s.id, QUEUES.map(([wire, , label]) => [wire, label])));
  options('ladder-queue', QUEUES.map(([, api, label]) => [api, label]));
  options('push-reason', REASONS.map((r) => [r, r.toLowerCase().replace(/_/g, ' ')]));
  options('fault-call', SERVER_CALLS.map((c) => [c]));
  if (token) {
    $('explorer-link').href = withToken('/devhost/explorer');
    $('openapi-link').href = withToken('/devhost/openapi.json');
  }

  $('login').onclick = () => act('Logged in', () => call('POST', '/devhost/login'));
  $('logout').onclick = () => act('Logged out', () => call('POST', '/devhost/logout'));
  for (const name of ['leagueServiceEnabled', 'JWTEnabled']) {
    $('switch-' + name).onchange = (event) =>
      act(`${name} ${event.target.checked ? 'on' : 'off'}`, () => call('PUT', '/devhost/switches/' + name, event.target.checked));
  }
  $('gameflow-set').onclick = () => act('Gameflow set', () =>
    call('PUT', '/devhost/gameflow', {phase: $('gameflow-phase').value, queue: $('gameflow-queue').value}));
  $('gameflow-end').onclick = () => act('Gameflow ended', () => call('DELETE', '/devhost/gameflow'));
  $('push').onclick = pushMessage;
  $('fault-set').onclick = () => {
    const [destination, method] = $('fault-call').value.split('.');
    const fault = {error: $('fault-error').value, delaySeconds: Number($('fault-delay').value) || 0};
    return act(`Fault set on ${destination}.${method}`, () =>
      call('PUT', `/devhost/faults/${destination}/${method}`, fault));
  };
  $('fault-clear').onclick = () => act('Faults cleared', () => call('DELETE', '/devhost/faults'));
  document.querySelectorAll('button.advance').forEach((button) => {
    button.onclick = () => act(`Clock moved on by ${button.textContent.slice(1)}`, () =>
      call('POST', '/devhost/clock', {seconds: Number(button.dataset.seconds)}));
  });
  $('standings-refresh').onclick = () => Promise.all([loadStandings(), loadSigned()]).then(scheduleJournal);
  $('ladders-refresh').onclick = () => loadLadders().then(scheduleJournal);
  $('ladder-queue').onchange = renderLadders;
  $('journal-kind').onchange = restartJournal;
  $('journal-clear').onclick = () => act('Journal cleared', () => call('DELETE', '/devhost/journal')).then(restartJournal);
}

async function start() {
  wire();
  connectEvents();
  try {
    await loadState();
  } catch (error) {
    say(error.message, true);
    return;
  }
  await Promise.all([loadSigned(), loadNotifications(), loadLadders()]);
  await loadStandings();
  loadJournal();
  setInterval(tick, 1000);
}

start();
