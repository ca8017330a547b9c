'use strict';

// Texts by the client's language number. Any other number is English.
const TEXTS = {
  0: {scenes: {1: '自选股', 4: '资讯', 5: '持仓', 12: '行情', 42: '研究'}, scene: '对话', ask: '请输入问题', send: '发送', stop: '停止', retry: '重试', fresh: '新会话', close: '关闭', failed: '回答未完成', sources: '来源', offline: '网络已断开', offlineTip: '请检查网络后重试', connecting: '连接中', slow: '网络较慢'},
  1: {scenes: {1: '自選股', 4: '資訊', 5: '持倉', 12: '行情', 42: '研究'}, scene: '對話', ask: '請輸入問題', send: '傳送', stop: '停止', retry: '重試', fresh: '新對話', close: '關閉', failed: '回答未完成', sources: '來源', offline: '網路已中斷', offlineTip: '請檢查網路後重試', connecting: '連線中', slow: '網路較慢'},
  2: {scenes: {1: 'Watchlist', 4: 'News', 5: 'Portfolio', 12: 'Quotes', 42: 'Research'}, scene: 'Chat', ask: 'Ask a question', send: 'Send', stop: 'Stop', retry: 'Retry', fresh: 'New session', close: 'Close', failed: 'The answer is incomplete', sources: 'Sources', offline: 'No connection', offlineTip: 'Check the network and retry', connecting: 'Connecting', slow: 'Slow connection'},
  5: {scenes: {1: 'ウォッチリスト', 4: 'ニュース', 5: 'ポートフォリオ', 12: '株価', 42: 'リサーチ'}, scene: 'チャット', ask: '質問を入力', send: '送信', stop: '停止', retry: '再試行', fresh: '新しい会話', close: '閉じる', failed: '回答は未完了です', sources: '出典', offline: '接続がありません', offlineTip: 'ネットワークを確認してください', connecting: '接続中', slow: '接続が遅い'},
  7: {scenes: {1: 'Liste de suivi', 4: 'Actualités', 5: 'Portefeuille', 12: 'Cours', 42: 'Recherche'}, scene: 'Conversation', ask: 'Posez une question', send: 'Envoyer', stop: 'Arrêter', retry: 'Réessayer', fresh: 'Nouvelle session', close: 'Fermer', failed: 'La réponse est incomplète', sources: 'Sources', offline: 'Aucune connexion', offlineTip: 'Vérifiez le réseau puis réessayez', connecting: 'Connexion', slow: 'Connexion lente'},
};
const STATUS = {good: 1, failed: 2, poor: 3, connecting: 4};
const SLOW_MS = 1500;
const HISTORY_KEY = 'history';

const bridge = window.zrclient || null;
const query = new URLSearchParams(location.search);
const scene = Number(query.get('scene'));
const element = (id) => document.getElementById(id);

let language = 2;
let history = [];
let running = null;  // the AbortController of the present answer
let reported = '';

const texts = () => TEXTS[language] || TEXTS[2];

// The window's own handlers never answer.
function tell(name, data) {
  if (bridge) {
    bridge.notify(name, {params: {data: data}});
  }
}

function reportStatus(status, desc = '', tips = '') {
  const data = {status: status, desc: desc, tips: tips};
  if (reported !== JSON.stringify(data)) {
    reported = JSON.stringify(data);
    tell('updateAIChatNetworkStatus', data);
  }
}

function applyTexts() {
  const text = texts();
  element('scene').textContent = text.scenes[scene] || text.scene;
  element('new-session').textContent = text.fresh;
  element('close').textContent = text.close;
  element('question-label').textContent = text.ask;
  element('send').textContent = text.send;
  element('stop').textContent = text.stop;
  element('sources').textContent = text.sources;
  document.querySelectorAll('.note').forEach((note) => { note.textContent = text.failed; });
  document.querySelectorAll('.retry').forEach((button) => { button.textContent = text.retry; });
}

function applyAppearance(appearance) {
  if (appearance && Number.isInteger(appearance.theme)) {
    document.documentElement.dataset.theme = String(appearance.theme);
  }
  if (appearance && Number.isInteger(appearance.language)) {
    language = appearance.language;
  }
  applyTexts();
}

function save() {
  sessionStorage.setItem(HISTORY_KEY, JSON.stringify(history));
}

// An answer is text. It is never read as markup.
function addMessage(entry) {
  const box = document.createElement('p');
  box.className = 'message ' + entry.role;
  box.textContent = entry.text;
  element('history').append(box);
  box.scrollIntoView({block: 'end'});
  return box;
}

function addRetry(box, question) {
  box.classList.add('failed');
  const note = document.createElement('span');
  note.className = 'note';
  const button = document.createElement('button');
  button.type = 'button';
  button.className = 'retry';
  button.addEventListener('click', () => {
    note.remove();
    button.remove();
    box.remove();
    history = history.filter((entry) => entry !== box.entry);
    answer(question);
  });
  element('history').append(note, document.createTextNode(' '), button);
  applyTexts();
  button.scrollIntoView({block: 'end'});
}

function setRunning(controller) {
  running = controller;
  element('send').disabled = controller !== null;
  element('stop').hidden = controller === null;
  element('new-session').disabled = controller !== null;
  tell('SetNewSessionEnable', {enable: controller === null});
}

async function answer(question) {
  const entry = {role: 'answer', text: ''};
  const box = addMessage(entry);
  box.entry = entry;
  history.push(entry);
  setRunning(new AbortController());
  const controller = running;
  const slow = setTimeout(() => reportStatus(STATUS.connecting, texts().connecting), SLOW_MS);
  let whole = false;
  try {
    const response = await fetch('/chat/answers', {
      method: 'POST',
      headers: {'Content-Type': 'application/json'},
      body: JSON.stringify({question: question, scene: scene, language: language}),
      signal: controller.signal,
    });
    if (!response.ok) {
      throw new Error(String(response.status));
    }
    const reader = response.body.getReader();
    const decoder = new TextDecoder();
    for (let piece = await reader.read(); !piece.done; piece = await reader.read()) {
      clearTimeout(slow);
      reportStatus(STATUS.good);
      entry.text += decoder.decode(piece.value, {stream: true});
      box.textContent = entry.text;
      box.scrollIntoView({block: 'end'});
    }
    whole = true;
  } catch (error) {
    if (!controller.signal.aborted) {
      reportStatus(STATUS.failed, texts().offline, texts().offlineTip);
    }
  }
  clearTimeout(slow);
  setRunning(null);
  save();
  if (!whole) {
    addRetry(box, question);
  }
  element('question').focus();
}

function ask(event) {
  event.preventDefault();
  const field = element('question');
  const question = field.value.trim();
  if (!question || running) {
    return;
  }
  field.value = '';
  const entry = {role: 'question', text: question};
  history.push(entry);
  addMessage(entry);
  answer(question);
}

function stop() {
  if (running) {
    running.abort();
  }
}

function newSession() {
  stop();
  history = [];
  save();
  element('history').replaceChildren();
  element('question').focus();
}

function restore() {
  if (query.get('needChangeSessionId') === '1') {
    sessionStorage.removeItem(HISTORY_KEY);
  }
  history = JSON.parse(sessionStorage.getItem(HISTORY_KEY) || '[]');
  history.forEach((entry) => addMessage(entry));
}

function start() {
  element('form').addEventListener('submit', ask);
  element('stop').addEventListener('click', stop);
  element('new-session').addEventListener('click', newSession);
  element('close').addEventListener('click', () => tell('closeWindow', {}));
  element('question').addEventListener('keydown', (event) => {
    if (event.key === 'Enter' && !event.shiftKey && !event.isComposing) {
      ask(event);
    }
  });
  document.addEventListener('keydown', (event) => {
    if (event.key === 'Escape') {
      event.preventDefault();  // the window would close too
      if (running) {
        stop();
      } else {
        tell('closeWindow', {});
      }
    }
  });
  window.addEventListener('offline', () => reportStatus(STATUS.failed, texts().offline, texts().offlineTip));
  window.addEventListener('online', () => reportStatus(STATUS.good));
  applyTexts();
  restore();
  if (bridge) {
    bridge.on('createSession', newSession);
    bridge.on('appearanceChanged', applyAppearance);
    bridge.call('getAppearance', {}).then(applyAppearance, () => {});
  }
  element('question').focus();
}

start();
