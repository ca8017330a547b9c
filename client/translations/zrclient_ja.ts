<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja">
<context>
    <name>CAIChatEntryButton</name>
    <message>
        <source>AI chat is open here (scene %1)</source>
        <translation>ここの AI チャットは利用できます（シーン %1）</translation>
    </message>
    <message>
        <source>Forced open by the developer override (scene %1)</source>
        <translation>開発者設定により強制的に開いています（シーン %1）</translation>
    </message>
    <message>
        <source>Forced closed by the developer override (scene %1)</source>
        <translation>開発者設定により強制的に閉じています（シーン %1）</translation>
    </message>
    <message>
        <source>Off: the server has not opened AI chat here to you (scene %1)</source>
        <translation>利用不可：サーバーがここの AI チャットを許可していません（シーン %1）</translation>
    </message>
    <message>
        <source>Off: log in to use AI chat (scene %1)</source>
        <translation>利用不可：AI チャットの利用にはログインが必要です（シーン %1）</translation>
    </message>
    <message>
        <source>Off: the module that serves AI chat is not there (scene %1)</source>
        <translation>利用不可：AI チャットを提供するモジュールがありません（シーン %1）</translation>
    </message>
    <message>
        <source>AI chat</source>
        <translation>AI チャット</translation>
    </message>
    <message>
        <source>AI chat, %1 (scene %2): forced open by the developer override</source>
        <translation>AI チャット、%1（シーン %2）：開発者設定により強制的に開放</translation>
    </message>
    <message>
        <source>AI chat, %1 (scene %2): opened by the server to this user</source>
        <translation>AI チャット、%1（シーン %2）：サーバーがこのユーザーに許可</translation>
    </message>
</context>
<context>
    <name>CAdPanelWindow</name>
    <message>
        <source>The module that serves ads is not there</source>
        <translation>広告を担うモジュールがありません</translation>
    </message>
    <message>
        <source>Popup panel</source>
        <translation>ポップアップパネル</translation>
    </message>
</context>
<context>
    <name>CComposition</name>
    <message>
        <source>Settings are neither read nor saved: their file is not available</source>
        <translation>設定を読み込みも保存もできません：ファイルを利用できません</translation>
    </message>
    <message>
        <source>Settings are not saved: their file or folder is read-only</source>
        <translation>設定は保存されません：ファイルまたはフォルダーが読み取り専用です</translation>
    </message>
    <message>
        <source>Settings are not saved: the disk is full or fails</source>
        <translation>設定は保存されません：ディスクがいっぱいか、故障しています</translation>
    </message>
    <message>
        <source>Settings are not saved: another client uses this folder</source>
        <translation>設定は保存されません：別のクライアントがこのフォルダーを使用中です</translation>
    </message>
    <message>
        <source>Settings are not saved: a newer version wrote their file</source>
        <translation>設定は保存されません：ファイルは新しいバージョンで作成されています</translation>
    </message>
    <message>
        <source>Settings are saved later: another program locks their file</source>
        <translation>設定は後で保存されます：別のプログラムがファイルをロックしています</translation>
    </message>
    <message>
        <source>Starting the server</source>
        <translation>サーバーを起動しています</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>接続済み</translation>
    </message>
    <message>
        <source>No connection (%1), trying again in %2 s</source>
        <translation>接続できません（%1）、%2 秒後に再試行します</translation>
    </message>
    <message>
        <source>The login of user %1 is refused: %2</source>
        <translation>ユーザー %1 のログインは拒否されました：%2</translation>
    </message>
    <message>
        <source>The server does not run (%1), starting it again</source>
        <translation>サーバーが動作していません（%1）、再起動します</translation>
    </message>
    <message>
        <source>The server does not answer (%1)</source>
        <translation>サーバーが応答しません（%1）</translation>
    </message>
</context>
<context>
    <name>CMainWindow</name>
    <message>
        <source>Workbench</source>
        <translation>ワークベンチ</translation>
    </message>
    <message>
        <source>Opened: %1</source>
        <translation>開きました：%1</translation>
    </message>
</context>
<context>
    <name>CMembershipCard</name>
    <message>
        <source>Edition</source>
        <translation>エディション</translation>
    </message>
    <message>
        <source>VIP system</source>
        <translation>VIP制度</translation>
    </message>
    <message>
        <source>Membership</source>
        <translation>会員</translation>
    </message>
    <message>
        <source>Plan</source>
        <translation>プラン</translation>
    </message>
    <message>
        <source>Trial</source>
        <translation>お試し</translation>
    </message>
    <message>
        <source>Renewed or free of charge</source>
        <translation>自動更新または無料</translation>
    </message>
    <message>
        <source>Asset protection</source>
        <translation>資産保護</translation>
    </message>
    <message>
        <source>Expired</source>
        <translation>期限切れ</translation>
    </message>
    <message>
        <source>None</source>
        <translation>なし</translation>
    </message>
    <message>
        <source>Not renewed</source>
        <translation>更新なし</translation>
    </message>
    <message>
        <source>Not known</source>
        <translation>不明</translation>
    </message>
    <message>
        <source>Days left: %1</source>
        <translation>残り日数%1</translation>
    </message>
    <message>
        <source>No member</source>
        <translation>非会員</translation>
    </message>
    <message>
        <source>Member</source>
        <translation>会員</translation>
    </message>
    <message>
        <source>Member of grade %1</source>
        <translation>グレード%1会員</translation>
    </message>
    <message>
        <source>Membership centre</source>
        <translation>会員センター</translation>
    </message>
    <message>
        <source>Nobody is logged in</source>
        <translation>ログインしていません</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
    <message>
        <source>Newer</source>
        <translation>新</translation>
    </message>
    <message>
        <source>Older</source>
        <translation>旧</translation>
    </message>
    <message>
        <source>Right %1</source>
        <translation>権限%1</translation>
    </message>
</context>
<context>
    <name>CNavigation</name>
    <message>
        <source>Expand the navigation</source>
        <translation>ナビゲーションを展開する</translation>
    </message>
    <message>
        <source>Collapse the navigation</source>
        <translation>ナビゲーションを折りたたむ</translation>
    </message>
</context>
<context>
    <name>CNoticeBanner</name>
    <message>
        <source>The client goes on without a module. %1</source>
        <translation>モジュールなしで動作を続けます。%1</translation>
    </message>
</context>
<context>
    <name>CTitleBar</name>
    <message>
        <source>Nobody is logged in</source>
        <translation>ログインしていません</translation>
    </message>
    <message>
        <source>Switch the user</source>
        <translation>ユーザーを切り替える</translation>
    </message>
    <message>
        <source>Show or hide the workbench</source>
        <translation>ワークベンチの表示を切り替える</translation>
    </message>
    <message>
        <source>Member</source>
        <translation>会員</translation>
    </message>
</context>
<context>
    <name>CUserMenu</name>
    <message>
        <source>Find a user</source>
        <translation>利用者を探す</translation>
    </message>
    <message>
        <source>Log out</source>
        <translation>ログアウト</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>ヘルプ</translation>
    </message>
</context>
<context>
    <name>CVipGallery</name>
    <message>
        <source>Main texts</source>
        <translation>メインの文言</translation>
    </message>
    <message>
        <source>Detail texts</source>
        <translation>詳細の文言</translation>
    </message>
    <message>
        <source>Detail sub texts</source>
        <translation>詳細サブの文言</translation>
    </message>
    <message>
        <source>The user has no record</source>
        <translation>このユーザーのデータなし</translation>
    </message>
    <message>
        <source>Activation type</source>
        <translation>有効化の種別</translation>
    </message>
    <message>
        <source>Days left</source>
        <translation>残り日数</translation>
    </message>
    <message>
        <source>Layout letter</source>
        <translation>レイアウト文字</translation>
    </message>
    <message>
        <source>VIP gallery</source>
        <translation>VIPギャラリー</translation>
    </message>
    <message>
        <source>As the server sent it</source>
        <translation>サーバーの値のまま</translation>
    </message>
</context>
<context>
    <name>Pages</name>
    <message>
        <source>About this right</source>
        <translation>この権利について</translation>
    </message>
    <message>
        <source>Watchlist</source>
        <translation>ウォッチリスト</translation>
    </message>
    <message>
        <source>The instruments you follow</source>
        <translation>フォロー中の銘柄</translation>
    </message>
    <message>
        <source>Quotes</source>
        <translation>株価</translation>
    </message>
    <message>
        <source>Price, order book and key figures</source>
        <translation>価格・板情報・主要指標</translation>
    </message>
    <message>
        <source>Research</source>
        <translation>リサーチ</translation>
    </message>
    <message>
        <source>What our analysts think</source>
        <translation>アナリストの見方</translation>
    </message>
    <message>
        <source>News</source>
        <translation>ニュース</translation>
    </message>
    <message>
        <source>What moves the markets today</source>
        <translation>今日の市場の動き</translation>
    </message>
    <message>
        <source>Portfolio</source>
        <translation>ポートフォリオ</translation>
    </message>
    <message>
        <source>What you hold, and how it does</source>
        <translation>保有資産と損益</translation>
    </message>
    <message>
        <source>Filled</source>
        <translation>約定</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>取消済み</translation>
    </message>
    <message>
        <source>Working</source>
        <translation>注文中</translation>
    </message>
    <message>
        <source>Buying power</source>
        <translation>買付余力</translation>
    </message>
    <message>
        <source>Margin used</source>
        <translation>証拠金使用額</translation>
    </message>
    <message>
        <source>Cash</source>
        <translation>現金</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>時刻</translation>
    </message>
    <message>
        <source>Symbol</source>
        <translation>銘柄コード</translation>
    </message>
    <message>
        <source>Side</source>
        <translation>売買</translation>
    </message>
    <message>
        <source>Quantity</source>
        <translation>数量</translation>
    </message>
    <message>
        <source>Order price</source>
        <translation>注文価格</translation>
    </message>
    <message>
        <source>State</source>
        <translation>状態</translation>
    </message>
    <message>
        <source>Buy</source>
        <translation>買い</translation>
    </message>
    <message>
        <source>Sell</source>
        <translation>売り</translation>
    </message>
    <message>
        <source>Today&apos;s orders</source>
        <translation>本日の注文</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>銘柄名</translation>
    </message>
    <message>
        <source>Condition</source>
        <translation>条件</translation>
    </message>
    <message>
        <source>Alert price</source>
        <translation>通知価格</translation>
    </message>
    <message>
        <source>Last</source>
        <translation>現在値</translation>
    </message>
    <message>
        <source>Distance</source>
        <translation>差</translation>
    </message>
    <message>
        <source>Rises above</source>
        <translation>上回る</translation>
    </message>
    <message>
        <source>Falls below</source>
        <translation>下回る</translation>
    </message>
    <message>
        <source>Reached</source>
        <translation>到達</translation>
    </message>
    <message>
        <source>Waiting</source>
        <translation>待機中</translation>
    </message>
    <message>
        <source>Sector</source>
        <translation>セクター</translation>
    </message>
    <message>
        <source>Change %</source>
        <translation>騰落率</translation>
    </message>
    <message>
        <source>Advancing</source>
        <translation>値上がり</translation>
    </message>
    <message>
        <source>Declining</source>
        <translation>値下がり</translation>
    </message>
    <message>
        <source>Turnover</source>
        <translation>売買代金</translation>
    </message>
    <message>
        <source>Leader</source>
        <translation>先導株</translation>
    </message>
    <message>
        <source>Open the quotes</source>
        <translation>株価を見る</translation>
    </message>
    <message>
        <source>Sample data</source>
        <translation>サンプルデータ</translation>
    </message>
    <message>
        <source>Avg. cost</source>
        <translation>平均取得単価</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>時価評価額</translation>
    </message>
    <message>
        <source>Profit / loss</source>
        <translation>損益</translation>
    </message>
    <message>
        <source>Total value</source>
        <translation>評価額合計</translation>
    </message>
    <message>
        <source>Day&apos;s result</source>
        <translation>本日の損益</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>本日の値動き</translation>
    </message>
    <message>
        <source>Key figures</source>
        <translation>主要指標</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>始値</translation>
    </message>
    <message>
        <source>High</source>
        <translation>高値</translation>
    </message>
    <message>
        <source>Low</source>
        <translation>安値</translation>
    </message>
    <message>
        <source>Previous close</source>
        <translation>前日終値</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>出来高</translation>
    </message>
    <message>
        <source>Market cap</source>
        <translation>時価総額</translation>
    </message>
    <message>
        <source>Bid size</source>
        <translation>買数量</translation>
    </message>
    <message>
        <source>Bid</source>
        <translation>買気配</translation>
    </message>
    <message>
        <source>Ask</source>
        <translation>売気配</translation>
    </message>
    <message>
        <source>Ask size</source>
        <translation>売数量</translation>
    </message>
    <message>
        <source>Order book</source>
        <translation>板情報</translation>
    </message>
    <message>
        <source>Reduce</source>
        <translation>売り</translation>
    </message>
    <message>
        <source>Hold</source>
        <translation>中立</translation>
    </message>
    <message>
        <source>Target %1</source>
        <translation>目標株価 %1</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>前日比</translation>
    </message>
    <message>
        <source>Order intake turns the corner</source>
        <translation>受注は底打ち</translation>
    </message>
    <message>
        <source>New lines come on stream two quarters early. We raise our estimates for the next year and see the margin back at its old level by autumn.</source>
        <translation>新ラインが二四半期早く稼働。来期予想を引き上げ、利益率は秋までに以前の水準へ戻るとみる。</translation>
    </message>
    <message>
        <source>Steady cash, few surprises</source>
        <translation>安定した資金、意外性は乏しい</translation>
    </message>
    <message>
        <source>The clinics fill as planned and the dividend is covered twice. What is missing is a reason to pay more than today&apos;s price.</source>
        <translation>クリニックの稼働は計画どおり、配当は利益の半分で賄える。ただし今以上の株価を払う理由に欠ける。</translation>
    </message>
    <message>
        <source>Freight rates weigh on the second half</source>
        <translation>運賃が下期の重荷に</translation>
    </message>
    <message>
        <source>Spot rates fell for the sixth week. Two ships due in spring add capacity at the wrong moment; we take our target down.</source>
        <translation>スポット運賃は六週連続で下落。春に就航する二隻は時期が悪く、目標株価を引き下げる。</translation>
    </message>
    <message>
        <source>Glasshouse Software reports growth above its own guidance</source>
        <translation>Glasshouse Software、会社予想を上回る成長</translation>
    </message>
    <message>
        <source>Pacific 200 ends the week a little higher in quiet trade</source>
        <translation>Pacific 200、薄商いの中で週末は小幅高</translation>
    </message>
    <message>
        <source>Cygnet Robotics wins a ten-year warehouse contract</source>
        <translation>Cygnet Robotics、倉庫向け十年契約を獲得</translation>
    </message>
    <message>
        <source>Brentfield Energy brings its third harbour wind park on line</source>
        <translation>Brentfield Energy、三カ所目の港湾風力発電所を稼働</translation>
    </message>
    <message>
        <source>Central bank keeps its rate, and says what would change its mind</source>
        <translation>中央銀行は金利を据え置き、変更の条件を示す</translation>
    </message>
    <message>
        <source>Dromore Logistics opens a rail link to the inland terminals</source>
        <translation>Dromore Logistics、内陸ターミナルへの鉄道を開通</translation>
    </message>
    <message>
        <source>Technology</source>
        <translation>テクノロジー</translation>
    </message>
    <message>
        <source>Energy</source>
        <translation>エネルギー</translation>
    </message>
    <message>
        <source>Health care</source>
        <translation>ヘルスケア</translation>
    </message>
    <message>
        <source>Industry</source>
        <translation>産業</translation>
    </message>
    <message>
        <source>Consumer goods</source>
        <translation>消費財</translation>
    </message>
    <message>
        <source>Materials</source>
        <translation>素材</translation>
    </message>
    <message>
        <source>Market</source>
        <translation>マーケット</translation>
    </message>
    <message>
        <source>The day, sector by sector</source>
        <translation>セクター別の一日</translation>
    </message>
    <message>
        <source>Alerts</source>
        <translation>アラート</translation>
    </message>
    <message>
        <source>The prices you want to hear of</source>
        <translation>通知を受けたい価格</translation>
    </message>
    <message>
        <source>Account</source>
        <translation>口座</translation>
    </message>
    <message>
        <source>Your means, and the day&apos;s orders</source>
        <translation>資金と本日の注文</translation>
    </message>
    <message>
        <source>Analyst consensus</source>
        <translation>アナリスト予想</translation>
    </message>
    <message>
        <source>Short selling</source>
        <translation>空売り</translation>
    </message>
    <message>
        <source>Sold short</source>
        <translation>空売り残高</translation>
    </message>
    <message>
        <source>Days to cover</source>
        <translation>買い戻し日数</translation>
    </message>
    <message>
        <source>Borrow fee %</source>
        <translation>貸株料 %</translation>
    </message>
</context>
<context>
    <name>RightStates</name>
    <message>
        <source>No state</source>
        <translation>状態なし</translation>
    </message>
    <message>
        <source>Limited time</source>
        <translation>期間限定</translation>
    </message>
    <message>
        <source>Frozen</source>
        <translation>凍結</translation>
    </message>
    <message>
        <source>Active</source>
        <translation>有効</translation>
    </message>
    <message>
        <source>Empty</source>
        <translation>空</translation>
    </message>
    <message>
        <source>Not activated</source>
        <translation>未有効化</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>有効化可能</translation>
    </message>
</context>
</TS>
