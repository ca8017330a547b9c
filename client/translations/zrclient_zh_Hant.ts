<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_Hant">
<context>
    <name>CAIChatEntryButton</name>
    <message>
        <source>AI chat is open here (scene %1)</source>
        <translation>此處的 AI 對話已開放（場景 %1）</translation>
    </message>
    <message>
        <source>Forced open by the developer override (scene %1)</source>
        <translation>已由開發者設定強制開放（場景 %1）</translation>
    </message>
    <message>
        <source>Forced closed by the developer override (scene %1)</source>
        <translation>已由開發者設定強制關閉（場景 %1）</translation>
    </message>
    <message>
        <source>Off: the server has not opened AI chat here to you (scene %1)</source>
        <translation>未開放：伺服器尚未為您開放此處的 AI 對話（場景 %1）</translation>
    </message>
    <message>
        <source>Off: log in to use AI chat (scene %1)</source>
        <translation>未開放：請先登入再使用 AI 對話（場景 %1）</translation>
    </message>
    <message>
        <source>Off: the module that serves AI chat is not there (scene %1)</source>
        <translation>未開放：提供 AI 對話的模組不存在（場景 %1）</translation>
    </message>
    <message>
        <source>AI chat</source>
        <translation>AI 對話</translation>
    </message>
    <message>
        <source>AI chat, %1 (scene %2): forced open by the developer override</source>
        <translation>AI 對話，%1（場景 %2）：由開發者設定強制開放</translation>
    </message>
    <message>
        <source>AI chat, %1 (scene %2): opened by the server to this user</source>
        <translation>AI 對話，%1（場景 %2）：伺服器已為此用戶開放</translation>
    </message>
</context>
<context>
    <name>CAdPanelWindow</name>
    <message>
        <source>The module that serves ads is not there</source>
        <translation>提供廣告的模組不存在</translation>
    </message>
    <message>
        <source>Popup panel</source>
        <translation>彈窗面板</translation>
    </message>
</context>
<context>
    <name>CComposition</name>
    <message>
        <source>Settings are neither read nor saved: their file is not available</source>
        <translation>設定無法讀取和儲存：檔案無法使用</translation>
    </message>
    <message>
        <source>Settings are not saved: their file or folder is read-only</source>
        <translation>設定不會儲存：檔案或資料夾為唯讀</translation>
    </message>
    <message>
        <source>Settings are not saved: the disk is full or fails</source>
        <translation>設定不會儲存：磁碟已滿或有故障</translation>
    </message>
    <message>
        <source>Settings are not saved: another client uses this folder</source>
        <translation>設定不會儲存：另一個用戶端正在使用此資料夾</translation>
    </message>
    <message>
        <source>Settings are not saved: a newer version wrote their file</source>
        <translation>設定不會儲存：檔案由較新的版本寫入</translation>
    </message>
    <message>
        <source>Settings are saved later: another program locks their file</source>
        <translation>設定稍後儲存：另一個程式鎖定了檔案</translation>
    </message>
    <message>
        <source>Starting the server</source>
        <translation>正在啟動伺服器</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>已連線</translation>
    </message>
    <message>
        <source>No connection (%1), trying again in %2 s</source>
        <translation>連線已中斷（%1），%2 秒後重試</translation>
    </message>
    <message>
        <source>The login of user %1 is refused: %2</source>
        <translation>用戶 %1 的登入被拒絕：%2</translation>
    </message>
    <message>
        <source>The server does not run (%1), starting it again</source>
        <translation>伺服器未執行（%1），正在重新啟動</translation>
    </message>
    <message>
        <source>The server does not answer (%1)</source>
        <translation>伺服器沒有回應（%1）</translation>
    </message>
</context>
<context>
    <name>CMainWindow</name>
    <message>
        <source>Workbench</source>
        <translation>工作台</translation>
    </message>
    <message>
        <source>Opened: %1</source>
        <translation>已開啟：%1</translation>
    </message>
</context>
<context>
    <name>CMembershipCard</name>
    <message>
        <source>Edition</source>
        <translation>版本</translation>
    </message>
    <message>
        <source>VIP system</source>
        <translation>VIP 體系</translation>
    </message>
    <message>
        <source>Membership</source>
        <translation>會員</translation>
    </message>
    <message>
        <source>Plan</source>
        <translation>方案</translation>
    </message>
    <message>
        <source>Trial</source>
        <translation>試用</translation>
    </message>
    <message>
        <source>Renewed or free of charge</source>
        <translation>自動續費或免費</translation>
    </message>
    <message>
        <source>Asset protection</source>
        <translation>資產保護</translation>
    </message>
    <message>
        <source>Expired</source>
        <translation>已過期</translation>
    </message>
    <message>
        <source>None</source>
        <translation>無</translation>
    </message>
    <message>
        <source>Not renewed</source>
        <translation>未續費</translation>
    </message>
    <message>
        <source>Not known</source>
        <translation>未知</translation>
    </message>
    <message>
        <source>Days left: %1</source>
        <translation>剩餘天數 %1</translation>
    </message>
    <message>
        <source>No member</source>
        <translation>非會員</translation>
    </message>
    <message>
        <source>Member</source>
        <translation>會員</translation>
    </message>
    <message>
        <source>Member of grade %1</source>
        <translation>%1 級會員</translation>
    </message>
    <message>
        <source>Membership centre</source>
        <translation>會員中心</translation>
    </message>
    <message>
        <source>Nobody is logged in</source>
        <translation>未登入</translation>
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
        <translation>舊</translation>
    </message>
    <message>
        <source>Right %1</source>
        <translation>權限 %1</translation>
    </message>
</context>
<context>
    <name>CNavigation</name>
    <message>
        <source>Expand the navigation</source>
        <translation>展開導覽列</translation>
    </message>
    <message>
        <source>Collapse the navigation</source>
        <translation>收起導覽列</translation>
    </message>
</context>
<context>
    <name>CNoticeBanner</name>
    <message>
        <source>The client goes on without a module. %1</source>
        <translation>用戶端將在缺少模組的情況下繼續執行。%1</translation>
    </message>
</context>
<context>
    <name>CTitleBar</name>
    <message>
        <source>Nobody is logged in</source>
        <translation>未登入</translation>
    </message>
    <message>
        <source>Switch the user</source>
        <translation>切換用戶</translation>
    </message>
    <message>
        <source>Show or hide the workbench</source>
        <translation>顯示或隱藏工作台</translation>
    </message>
    <message>
        <source>Member</source>
        <translation>會員</translation>
    </message>
</context>
<context>
    <name>CUserMenu</name>
    <message>
        <source>Find a user</source>
        <translation>尋找使用者</translation>
    </message>
    <message>
        <source>Log out</source>
        <translation>登出</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>說明</translation>
    </message>
</context>
<context>
    <name>CVipGallery</name>
    <message>
        <source>Main texts</source>
        <translation>主文案</translation>
    </message>
    <message>
        <source>Detail texts</source>
        <translation>詳情文案</translation>
    </message>
    <message>
        <source>Detail sub texts</source>
        <translation>詳情副文案</translation>
    </message>
    <message>
        <source>The user has no record</source>
        <translation>該使用者沒有記錄</translation>
    </message>
    <message>
        <source>Activation type</source>
        <translation>啟用類型</translation>
    </message>
    <message>
        <source>Days left</source>
        <translation>剩餘天數</translation>
    </message>
    <message>
        <source>Layout letter</source>
        <translation>版面字母</translation>
    </message>
    <message>
        <source>VIP gallery</source>
        <translation>VIP 展示</translation>
    </message>
    <message>
        <source>As the server sent it</source>
        <translation>按伺服器資料</translation>
    </message>
</context>
<context>
    <name>Pages</name>
    <message>
        <source>About this right</source>
        <translation>了解此權益</translation>
    </message>
    <message>
        <source>Watchlist</source>
        <translation>自選</translation>
    </message>
    <message>
        <source>The instruments you follow</source>
        <translation>您關注的證券</translation>
    </message>
    <message>
        <source>Quotes</source>
        <translation>報價</translation>
    </message>
    <message>
        <source>Price, order book and key figures</source>
        <translation>價格、買賣盤與關鍵數據</translation>
    </message>
    <message>
        <source>Research</source>
        <translation>研究</translation>
    </message>
    <message>
        <source>What our analysts think</source>
        <translation>分析師觀點</translation>
    </message>
    <message>
        <source>News</source>
        <translation>新聞</translation>
    </message>
    <message>
        <source>What moves the markets today</source>
        <translation>今日市場動態</translation>
    </message>
    <message>
        <source>Portfolio</source>
        <translation>持倉</translation>
    </message>
    <message>
        <source>What you hold, and how it does</source>
        <translation>持有資產與盈虧</translation>
    </message>
    <message>
        <source>Filled</source>
        <translation>已成交</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>已撤單</translation>
    </message>
    <message>
        <source>Working</source>
        <translation>掛單中</translation>
    </message>
    <message>
        <source>Buying power</source>
        <translation>購買力</translation>
    </message>
    <message>
        <source>Margin used</source>
        <translation>已用保證金</translation>
    </message>
    <message>
        <source>Cash</source>
        <translation>可用資金</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>時間</translation>
    </message>
    <message>
        <source>Symbol</source>
        <translation>代號</translation>
    </message>
    <message>
        <source>Side</source>
        <translation>方向</translation>
    </message>
    <message>
        <source>Quantity</source>
        <translation>數量</translation>
    </message>
    <message>
        <source>Order price</source>
        <translation>委託價</translation>
    </message>
    <message>
        <source>State</source>
        <translation>狀態</translation>
    </message>
    <message>
        <source>Buy</source>
        <translation>買入</translation>
    </message>
    <message>
        <source>Sell</source>
        <translation>賣出</translation>
    </message>
    <message>
        <source>Today&apos;s orders</source>
        <translation>今日訂單</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名稱</translation>
    </message>
    <message>
        <source>Condition</source>
        <translation>條件</translation>
    </message>
    <message>
        <source>Alert price</source>
        <translation>提示價</translation>
    </message>
    <message>
        <source>Last</source>
        <translation>最新價</translation>
    </message>
    <message>
        <source>Distance</source>
        <translation>距離</translation>
    </message>
    <message>
        <source>Rises above</source>
        <translation>升破</translation>
    </message>
    <message>
        <source>Falls below</source>
        <translation>跌破</translation>
    </message>
    <message>
        <source>Reached</source>
        <translation>已觸發</translation>
    </message>
    <message>
        <source>Waiting</source>
        <translation>等待中</translation>
    </message>
    <message>
        <source>Sector</source>
        <translation>板塊</translation>
    </message>
    <message>
        <source>Change %</source>
        <translation>漲跌幅</translation>
    </message>
    <message>
        <source>Advancing</source>
        <translation>上漲</translation>
    </message>
    <message>
        <source>Declining</source>
        <translation>下跌</translation>
    </message>
    <message>
        <source>Turnover</source>
        <translation>成交額</translation>
    </message>
    <message>
        <source>Leader</source>
        <translation>領漲</translation>
    </message>
    <message>
        <source>Open the quotes</source>
        <translation>查看報價</translation>
    </message>
    <message>
        <source>Sample data</source>
        <translation>範例資料</translation>
    </message>
    <message>
        <source>Avg. cost</source>
        <translation>成本價</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>市值</translation>
    </message>
    <message>
        <source>Profit / loss</source>
        <translation>盈虧</translation>
    </message>
    <message>
        <source>Total value</source>
        <translation>總資產</translation>
    </message>
    <message>
        <source>Day&apos;s result</source>
        <translation>今日盈虧</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>今日走勢</translation>
    </message>
    <message>
        <source>Key figures</source>
        <translation>關鍵數據</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>今開</translation>
    </message>
    <message>
        <source>High</source>
        <translation>最高</translation>
    </message>
    <message>
        <source>Low</source>
        <translation>最低</translation>
    </message>
    <message>
        <source>Previous close</source>
        <translation>昨收</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>成交量</translation>
    </message>
    <message>
        <source>Market cap</source>
        <translation>總市值</translation>
    </message>
    <message>
        <source>Bid size</source>
        <translation>買量</translation>
    </message>
    <message>
        <source>Bid</source>
        <translation>買價</translation>
    </message>
    <message>
        <source>Ask</source>
        <translation>賣價</translation>
    </message>
    <message>
        <source>Ask size</source>
        <translation>賣量</translation>
    </message>
    <message>
        <source>Order book</source>
        <translation>買賣盤</translation>
    </message>
    <message>
        <source>Reduce</source>
        <translation>減持</translation>
    </message>
    <message>
        <source>Hold</source>
        <translation>持有</translation>
    </message>
    <message>
        <source>Target %1</source>
        <translation>目標價 %1</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>漲跌</translation>
    </message>
    <message>
        <source>Order intake turns the corner</source>
        <translation>訂單增長迎來轉折</translation>
    </message>
    <message>
        <source>New lines come on stream two quarters early. We raise our estimates for the next year and see the margin back at its old level by autumn.</source>
        <translation>新產線提前兩個季度投產。我們上調明年預測，預計利潤率將於秋季恢復至此前水平。</translation>
    </message>
    <message>
        <source>Steady cash, few surprises</source>
        <translation>現金流穩定，驚喜不多</translation>
    </message>
    <message>
        <source>The clinics fill as planned and the dividend is covered twice. What is missing is a reason to pay more than today&apos;s price.</source>
        <translation>診所按計劃滿員，股息覆蓋兩倍。目前缺少支持更高價格的理由。</translation>
    </message>
    <message>
        <source>Freight rates weigh on the second half</source>
        <translation>運價拖累下半年業績</translation>
    </message>
    <message>
        <source>Spot rates fell for the sixth week. Two ships due in spring add capacity at the wrong moment; we take our target down.</source>
        <translation>現貨運價連續第六週下跌。春季交付的兩艘新船在不利時點增加運力，我們下調目標價。</translation>
    </message>
    <message>
        <source>Glasshouse Software reports growth above its own guidance</source>
        <translation>Glasshouse Software 業績增長超出自身指引</translation>
    </message>
    <message>
        <source>Pacific 200 ends the week a little higher in quiet trade</source>
        <translation>Pacific 200 指數交投清淡，本週小幅收高</translation>
    </message>
    <message>
        <source>Cygnet Robotics wins a ten-year warehouse contract</source>
        <translation>Cygnet Robotics 贏得十年期倉儲合約</translation>
    </message>
    <message>
        <source>Brentfield Energy brings its third harbour wind park on line</source>
        <translation>Brentfield Energy 第三座港口風電場併網</translation>
    </message>
    <message>
        <source>Central bank keeps its rate, and says what would change its mind</source>
        <translation>央行維持利率不變，並說明調整條件</translation>
    </message>
    <message>
        <source>Dromore Logistics opens a rail link to the inland terminals</source>
        <translation>Dromore Logistics 開通內陸碼頭鐵路專線</translation>
    </message>
    <message>
        <source>Technology</source>
        <translation>科技</translation>
    </message>
    <message>
        <source>Energy</source>
        <translation>能源</translation>
    </message>
    <message>
        <source>Health care</source>
        <translation>醫療保健</translation>
    </message>
    <message>
        <source>Industry</source>
        <translation>工業</translation>
    </message>
    <message>
        <source>Consumer goods</source>
        <translation>消費</translation>
    </message>
    <message>
        <source>Materials</source>
        <translation>材料</translation>
    </message>
    <message>
        <source>Market</source>
        <translation>市場</translation>
    </message>
    <message>
        <source>The day, sector by sector</source>
        <translation>今日各板塊表現</translation>
    </message>
    <message>
        <source>Alerts</source>
        <translation>提示</translation>
    </message>
    <message>
        <source>The prices you want to hear of</source>
        <translation>您希望收到提示的價格</translation>
    </message>
    <message>
        <source>Account</source>
        <translation>帳戶</translation>
    </message>
    <message>
        <source>Your means, and the day&apos;s orders</source>
        <translation>可用資金與今日訂單</translation>
    </message>
    <message>
        <source>Analyst consensus</source>
        <translation>分析師共識</translation>
    </message>
    <message>
        <source>Short selling</source>
        <translation>賣空</translation>
    </message>
    <message>
        <source>Sold short</source>
        <translation>賣空量</translation>
    </message>
    <message>
        <source>Days to cover</source>
        <translation>回補天數</translation>
    </message>
    <message>
        <source>Borrow fee %</source>
        <translation>借券費率 %</translation>
    </message>
</context>
<context>
    <name>RightStates</name>
    <message>
        <source>No state</source>
        <translation>無狀態</translation>
    </message>
    <message>
        <source>Limited time</source>
        <translation>限時</translation>
    </message>
    <message>
        <source>Frozen</source>
        <translation>已凍結</translation>
    </message>
    <message>
        <source>Active</source>
        <translation>有效</translation>
    </message>
    <message>
        <source>Empty</source>
        <translation>空</translation>
    </message>
    <message>
        <source>Not activated</source>
        <translation>未啟用</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>可啟用</translation>
    </message>
</context>
</TS>
